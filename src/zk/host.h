#pragma once

#include <zk/host/color.h>
#include <zk/host/component.h>
#include <zk/host/componentref.h>
#include <zk/host/controlcanvas.h>
#include <zk/host/drawingcanvas.h>
#include <zk/host/drawinglayer.h>
#include <zk/host/floattext.h>
#include <zk/host/formreading.h>
#include <zk/host/glsurface.h>
#include <zk/host/message.h>
#include <zk/host/picture.h>
#include <zk/host/propertypath.h>
#include <zk/host/shiftstate.h>
#include <zk/host/stillalive.h>
#include <zk/host/timer.h>
#include <zk/host/workarounds.h>
