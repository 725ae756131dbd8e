#pragma once

// The shapes that stand in scenes, and frames that move with a parameter.

#include <zk/_zkogltools/basefun.h>
#include <zk/_zkogltools/box.h>
#include <zk/_zkogltools/customshape.h>
#include <zk/_zkogltools/cylinder.h>
#include <zk/_zkogltools/ellipseway.h>
#include <zk/_zkogltools/oglshape.h>
#include <zk/_zkogltools/plane.h>
#include <zk/_zkogltools/refshape.h>
#include <zk/_zkogltools/sphere.h>
#include <zk/_zkogltools/stdbases.h>
