#pragma once

#include <cstdint>

// OpenGL's numbers for what the attribute objects and lights mean. Written out here so that these units need no OpenGL
// header; named unlike OpenGL's macros so that both can be included.
namespace zk::glvalue {

/// Faces.
inline constexpr std::uint32_t Front = 0x0404;
inline constexpr std::uint32_t Back = 0x0405;
inline constexpr std::uint32_t FrontAndBack = 0x0408;

/// Polygon modes.
inline constexpr std::uint32_t Point = 0x1B00;
inline constexpr std::uint32_t Line = 0x1B01;
inline constexpr std::uint32_t Fill = 0x1B02;

/// Attenuation factors of a light.
inline constexpr std::uint32_t ConstantAttenuation = 0x1207;
inline constexpr std::uint32_t LinearAttenuation = 0x1208;
inline constexpr std::uint32_t QuadraticAttenuation = 0x1209;

}  // namespace zk::glvalue
