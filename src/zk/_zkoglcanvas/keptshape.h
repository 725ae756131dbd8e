#pragma once

#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkcomtypes/texturekind.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>

#include <cstdint>
#include <limits>

namespace zk {

class Tattributes;

/// A box along the axes that grows with what is put into it; empty at first.
struct ZKOGLCANVAS_API Bounds {
    /// Farther out than any point.
    static constexpr double far = std::numeric_limits<double>::infinity();
    TXYZ Low{far, far, far};      ///< the corner with the smallest coordinates
    TXYZ High{-far, -far, -far};  ///< and with the greatest

    /// Grows to hold a point as well.
    void Add(const TXYZ& point);
    /// True until there is a point in it.
    bool IsEmpty() const { return !(Low.x <= High.x); }
};

/// What decides how faces are drawn, apart from their points and their material.
struct FaceStyle {
    unsigned Mode = 0;             ///< how polygons are rasterised: GL_POINT, GL_LINE, GL_FILL
    unsigned Primitive = 0;        ///< what the points of a face are drawn as
    double Resolution = 0;         ///< the greatest perimeter of a triangle, 0 for any
    double Orientation = 1.0;      ///< the sign of normals
    bool ClockWise = true;         ///< which way round OpenGL sees fronts
    bool Textured = false;         ///< points come with texture coordinates,
    TBAse TextureBase = Unitbase;  ///< which are those in this frame; `Unitbase` without a texture

    friend bool operator==(const FaceStyle&, const FaceStyle&) = default;
};

/// What was drawn into a list: where, and how much.
struct Drawn {
    Bounds Box;                 ///< where, in the coordinates of what was asked for
    std::int64_t Vertices = 0;  ///< how much
};

/// What a scene knows of the present drawing of a shape.
struct KeptDrawing {
    /// All that decides what is drawn, besides the shape's own form and place.
    struct Style {
        FaceStyle Face;            ///< how faces were drawn
        bool Shown = false;        ///< false: nothing was drawn
        bool OwnMaterial = false;  ///< false: drawn with what is in force
        Tmaterialkind Material;    ///< its own material
        TTextureKind Texture;      ///< its picture is in OpenGL's hands if it is visible; otherwise a default one

        friend bool operator==(const Style&, const Style&) = default;
    };

    /// Grows with every change of the drawing, so that who holds a copy can tell that it is out of date.
    std::uint64_t Version = 1;
    Style Last;  ///< how it was drawn last
    Bounds Box;  ///< and where, in the coordinates of the scene as they are at the shape's turn
    /// The scene's number for the list that the drawing is in.
    std::int32_t Group = -1;
};

/// A shape whose drawing a scene can keep: everything it draws comes from this library, so that nothing but its own
/// properties and the style of faces decides what it is.
class ZKOGLCANVAS_API KeptShape {
  public:
    virtual ~KeptShape() = default;

    /// False for a shape that user code draws, in `OnPlay` or in a class of its own, and for one that draws what
    /// changes without its knowledge. It is played each time its scene is compiled.
    virtual bool CanBeKept() const = 0;
    /// False for a shape that is hidden: nothing of it is drawn.
    virtual bool IsShown() const = 0;
    /// The attributes it draws with, or null for those in force.
    virtual const Tattributes* KeptAttributes() const = 0;
    /// Draws into the list that is being compiled: place, name and geometry; attributes and matrix are left as they
    /// are, but for the remainder. The box is in the coordinates of the scene.
    virtual Drawn DrawKept(const FaceStyle& style) = 0;
    /// By how much the shapes behind this one in the scene are moved (see `TCustomShape`); false where that cannot be
    /// told.
    virtual bool Remainder(TXYZ& by) const = 0;

    /// What the scene that plays the shape knows of its drawing. For scenes and shapes only.
    KeptDrawing& Kept() { return kept_; }
    const KeptDrawing& Kept() const { return kept_; }

  private:
    KeptDrawing kept_;
};

}  // namespace zk
