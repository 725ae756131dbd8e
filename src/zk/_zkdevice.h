#pragma once

#include <zk/_zkdevice/attributeskind.h>
#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkdevice/canvas3d.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkdevice/device.h>
#include <zk/_zkdevice/devicestate.h>
#include <zk/_zkdevice/primdevice.h>
