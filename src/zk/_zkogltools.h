#pragma once

// The shapes that stand in scenes.

#include <zk/_zkogltools/box.h>
#include <zk/_zkogltools/customshape.h>
#include <zk/_zkogltools/oglshape.h>
