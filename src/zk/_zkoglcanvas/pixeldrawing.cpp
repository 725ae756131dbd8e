#include "pixeldrawing.h"

#include <zk/_zkoglcanvas/glapi.h>

namespace zk {

PixelDrawing::PixelDrawing(const QSize& window) : window_(window) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (const GLenum step : {GL_LIGHTING, GL_TEXTURE_1D, GL_TEXTURE_2D, GL_FOG, GL_BLEND, GL_ALPHA_TEST, GL_DEPTH_TEST,
                              GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_COLOR_LOGIC_OP})
        glDisable(step);
    for (GLenum plane = GL_CLIP_PLANE0; plane <= GL_CLIP_PLANE5; ++plane)
        glDisable(plane);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glViewport(0, 0, window.width(), window.height());
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
}

PixelDrawing::~PixelDrawing() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopClientAttrib();
    glPopAttrib();
}

void PixelDrawing::Replace(const void* rgba) {
    glDisable(GL_BLEND);
    glPixelZoom(1, 1);
    glRasterPos2i(-1, -1);
    glDrawPixels(window_.width(), window_.height(), GL_RGBA, GL_UNSIGNED_BYTE, rgba);
}

void PixelDrawing::Over(const QImage& image, const QPoint& corner) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glPixelZoom(1, -1);  // an image's first row is its uppermost
    glRasterPos2i(-1, -1);
    // A position given in coordinates would be refused outside of the window, and rounded within.
    glBitmap(0, 0, 0, 0, GLfloat(corner.x()), GLfloat(window_.height() - corner.y()), nullptr);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, GLint(image.bytesPerLine() / 4));
    glDrawPixels(image.width(), image.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.constBits());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

}  // namespace zk
