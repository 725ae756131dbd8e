#pragma once

// The whole unit _zkxyz: records, constants, growable arrays and lists.
#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/itemlist.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/_zkxyz/message.h>
#include <zk/_zkxyz/pointerlist.h>
#include <zk/_zkxyz/records.h>
#include <zk/_zkxyz/trfbuffer.h>
