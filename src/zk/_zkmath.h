#pragma once

// The whole unit _zkmath: operations on the records of _zkxyz.
#include <zk/_zkmath/between.h>
#include <zk/_zkmath/frame.h>
#include <zk/_zkmath/inside.h>
#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/plane.h>
#include <zk/_zkmath/point.h>
#include <zk/_zkmath/segment.h>
#include <zk/_zkmath/tolerance.h>
#include <zk/_zkmath/vector.h>
