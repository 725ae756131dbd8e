#pragma once

// The OpenGL canvas: rendering context and paint cycle, viewing, scenes, picking, lights and materials, the host
// control.

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/control.h>
#include <zk/_zkoglcanvas/glcolor.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/ogllight.h>
#include <zk/_zkoglcanvas/oglmaterial.h>
#include <zk/_zkoglcanvas/oglpolyattributes.h>
#include <zk/_zkoglcanvas/ogltexture.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/refscene.h>
#include <zk/_zkoglcanvas/scene.h>
