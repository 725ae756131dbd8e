#pragma once

#include <zk/_zkdevice/attributeskind.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkdevice/device.h>
#include <zk/_zkdevice/devicestate.h>
#include <zk/_zkdevice/primdevice.h>
