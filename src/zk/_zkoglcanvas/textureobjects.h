#pragma once

#include <zk/_zkcomtypes/texturekind.h>
#include <zk/export.h>

#include <cstdint>
#include <vector>

namespace zk {

class RenderContext;

/// The pictures that a rendering context holds as texture objects, so that the bytes of each go to OpenGL once. The
/// objects go with the context.
///
/// Everything here needs that context to be current. It may be called while a list is compiled: objects are bound in
/// the list, but pictures travel outside of it.
class ZKOGLCANVAS_API TextureObjects {
  public:
    /// For the pictures of that context, which must outlive it.
    explicit TextureObjects(RenderContext& context) : context_(context) {}

    /// Makes the object for a picture the current texture, so that what is set for GL_TEXTURE_2D is set for it; the
    /// first time the object is empty. Null: OpenGL's own texture, which no picture here is put into.
    void Bind(const TPixels& pixels);

    /// Hands the picture to OpenGL unless its object holds it already. `pixels` has 3 · width · height bytes. Its
    /// object must have been bound before; what is bound in the end is left open.
    void Upload(const TPixels& pixels, std::int32_t width, std::int32_t height);

    /// Deletes the object for a picture. True if there was one: lists that bind it must be compiled again.
    bool Drop(const TPixels& pixels);

    /// How many pictures OpenGL holds.
    std::size_t Count() const { return entries_.size(); }

  private:
    struct Entry {
        std::weak_ptr<const std::vector<std::uint8_t>> pixels;
        unsigned name = 0;
        std::int32_t width = 0;  ///< as handed to OpenGL
        std::int32_t height = 0;
    };

    Entry& entryOf(const TPixels& pixels);
    void dropUnused();

    RenderContext& context_;
    std::vector<Entry> entries_;
};

}  // namespace zk
