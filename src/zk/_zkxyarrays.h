#pragma once

// The whole unit _zkxyarrays: operations on polygons and on lists of polygons.
#include <zk/_zkxyarrays/convex.h>
#include <zk/_zkxyarrays/crossing.h>
#include <zk/_zkxyarrays/distance.h>
#include <zk/_zkxyarrays/orientation.h>
#include <zk/_zkxyarrays/polyplane.h>
#include <zk/_zkxyarrays/setoperation.h>
#include <zk/_zkxyarrays/transform.h>
#include <zk/_zkxyarrays/walk.h>
