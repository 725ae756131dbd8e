#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/ogltexture.h>

namespace zk {

TOglTexture::TOglTexture(TZkOglCanvas* canvas) : canvas_(canvas) {}

TZkOglCanvas* TOglTexture::canvas() const {
    return qobject_cast<TZkOglCanvas*>(canvas_.data());
}

void TOglTexture::SetVisible(bool visible) {
    const bool shown = visible && GetPixels() && !GetPixels()->empty();
    if (shown) {
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);  // rows of RGB bytes follow each other without a gap
        glTexImage2D(GL_TEXTURE_2D, 0, 3, getwidth(), getHeight(), 0, GL_RGB, GL_UNSIGNED_BYTE, GetPixels()->data());
        glPopClientAttrib();
        glEnable(GL_TEXTURE_2D);
    } else {
        glDisable(GL_TEXTURE_2D);
    }
    TTexture::SetVisible(shown);
}

bool TOglTexture::GetREpeat() const {
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    return wrap == GL_REPEAT;
}

void TOglTexture::SetRepeat(bool repeat) {
    TTexture::SetRepeat(repeat);
    const GLint wrap = repeat ? GL_REPEAT : GL_CLAMP;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
}

TTexFilter TOglTexture::GetFilter() const {
    GLint filter = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
    return filter == GL_LINEAR ? gllinear : glnearest;
}

void TOglTexture::SetFilter(TTexFilter filter) {
    TTexture::SetFilter(filter);
    if (filter != glnearest && filter != gllinear)
        return;
    const GLint value = filter == gllinear ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, value);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, value);
}

TTexEnvMode TOglTexture::GetEnvmode() const {
    GLint mode = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    if (mode == GL_BLEND)
        return glblend;
    return mode == GL_DECAL ? gldecal : glmodulate;
}

void TOglTexture::SetEnvmode(TTexEnvMode mode) {
    TTexture::SetEnvmode(mode);
    switch (mode) {
        case glmodulate:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        case gldecal:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
        case glblend:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND);
    }
}

void TOglTexture::SettextureKind(const TTextureKind& kind) {
    PrintLn(QStringLiteral("SetTextureKind"));
    const ChangeBracket bracket(canvas());
    TTexture::SettextureKind(kind);
}

void TOglTexture::SetPicture(const PicName& name) {
    const ChangeBracket bracket(canvas());
    TTexture::SetPicture(name);
}

// The texture matrix is scaled by 1 in each axis: the world size changes nothing in it, but whatever becomes of the
// scale would come into force here.
void TOglTexture::passTextureScale() {
    if (TZkOglCanvas* owner = canvas(); owner && owner->HasContext())
        owner->SetTextureScale(owner->getTextureScale());
}

void TOglTexture::SetWorldheight(double height) {
    TTexture::SetWorldheight(height);
    passTextureScale();
}

void TOglTexture::SetWorldWidth(double width) {
    TTexture::SetWorldWidth(width);
    passTextureScale();
}

}  // namespace zk
