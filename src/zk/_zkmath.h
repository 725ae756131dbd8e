#pragma once

// The whole unit _zkmath: operations on the records of _zkxyz.
#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/tolerance.h>
