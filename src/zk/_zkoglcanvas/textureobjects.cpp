#include "textureobjects.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <algorithm>

namespace zk {

namespace {

bool isSame(const std::weak_ptr<const std::vector<std::uint8_t>>& one, const TPixels& other) {
    return !one.owner_before(other) && !other.owner_before(one);
}

}  // namespace

TextureObjects::Entry& TextureObjects::entryOf(const TPixels& pixels) {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&pixels](const Entry& entry) { return isSame(entry.pixels, pixels); });
    if (found != entries_.end())
        return *found;
    dropUnused();
    Entry entry;
    entry.pixels = pixels;
    glGenTextures(1, &entry.name);
    entries_.push_back(entry);
    return entries_.back();
}

// Pictures that nobody holds any more, the registry included, will not be shown again.
void TextureObjects::dropUnused() {
    std::erase_if(entries_, [](const Entry& entry) {
        if (!entry.pixels.expired())
            return false;
        glDeleteTextures(1, &entry.name);
        return true;
    });
}

void TextureObjects::Bind(const TPixels& pixels) {
    glBindTexture(GL_TEXTURE_2D, pixels ? entryOf(pixels).name : 0);
}

void TextureObjects::Upload(const TPixels& pixels, std::int32_t width, std::int32_t height) {
    Entry& entry = entryOf(pixels);
    if (entry.width == width && entry.height == height)
        return;
    entry.width = width;
    entry.height = height;
    context_.OutsideOfLists([&entry, &pixels] {
        glBindTexture(GL_TEXTURE_2D, entry.name);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);  // rows of RGB bytes follow each other without a gap
        glTexImage2D(GL_TEXTURE_2D, 0, 3, entry.width, entry.height, 0, GL_RGB, GL_UNSIGNED_BYTE, pixels->data());
        glPopClientAttrib();
    });
}

bool TextureObjects::Drop(const TPixels& pixels) {
    return std::erase_if(entries_, [&pixels](const Entry& entry) {
               if (!isSame(entry.pixels, pixels))
                   return false;
               glDeleteTextures(1, &entry.name);
               return true;
           }) > 0;
}

}  // namespace zk
