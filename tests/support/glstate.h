#pragma once

#include <map>
#include <string>

namespace zk::test {

/// All state of the current OpenGL context that a program can ask for and the library could change, as text by name:
/// matrices and their stacks, enables, lights, materials, clip planes, textures, the buffers' pixels and more. The
/// pointer of the selection buffer is left out: who picks sets it.
using GlState = std::map<std::string, std::string>;

GlState CurrentGlState();

/// One line for each entry that differs; empty where none does.
std::string Difference(const GlState& before, const GlState& after);

}  // namespace zk::test
