#pragma once

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkcomtypes/displaylist.h>
#include <zk/_zkcomtypes/enums.h>
#include <zk/_zkcomtypes/glvalues.h>
#include <zk/_zkcomtypes/graphicsobject.h>
#include <zk/_zkcomtypes/light.h>
#include <zk/_zkcomtypes/lightmodel.h>
#include <zk/_zkcomtypes/lights.h>
#include <zk/_zkcomtypes/material.h>
#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkcomtypes/polyattributes.h>
#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkcomtypes/texture.h>
#include <zk/_zkcomtypes/texturekind.h>
#include <zk/_zkcomtypes/textureregistry.h>
