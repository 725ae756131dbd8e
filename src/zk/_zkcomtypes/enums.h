#pragma once

#include <zk/export.h>

#include <QObject>

#include <cstdint>

// The choices that attribute objects publish. Their names and order are stored with forms and must never change: not
// `grtrianglefan` either, whose first letters have always been these.
//
// One byte each. Values beyond the last name can be stored (nothing checks them); every operation says what it makes of
// them. Qt's property system knows the names through this namespace's meta-object: no other header may open a
// Q_NAMESPACE in `zk`.
namespace zk {
Q_NAMESPACE_EXPORT(ZKCOMTYPES_API)

/// How polygons are rasterised.
enum TPAMode : std::uint8_t { glpoint, glline, glfill };
Q_ENUM_NS(TPAMode)

/// What a run of points is drawn as; the ordinals are OpenGL's own numbers of the primitives.
enum TPAStyle : std::uint8_t {
    glpoints,
    gllines,
    gllineloop,
    gllinestrip,
    gltriangles,
    gltrianglesstrip,
    grtrianglefan,
    glquads,
    glquadstrip,
    glpolygon
};
Q_ENUM_NS(TPAStyle)

/// The side of a polygon that a material applies to.
enum TMFace : std::uint8_t { glfront, glback, glfrontandback };
Q_ENUM_NS(TMFace)

/// How a texture is combined with the lit colour beneath.
enum TTexEnvMode : std::uint8_t { glmodulate, gldecal, glblend };
Q_ENUM_NS(TTexEnvMode)

/// How a texture is sampled.
enum TTexFilter : std::uint8_t { glnearest, gllinear };
Q_ENUM_NS(TTexFilter)

/// Selects a predefined material, see `Tmaterial::SetMatKind`.
enum TDefmatKind : std::uint8_t { NoDefMat, matGray, matAqua, matNavy, matLtGray, matRed };
Q_ENUM_NS(TDefmatKind)

}  // namespace zk
