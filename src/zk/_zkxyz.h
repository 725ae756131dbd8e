#pragma once

// The whole unit _zkxyz: records, constants, growable arrays and lists.
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/message.h>
#include <zk/_zkxyz/records.h>
