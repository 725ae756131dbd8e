#include "ogltexture.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/textureobjects.h>

namespace zk {

namespace {

void passRepeat(bool repeat) {
    const GLint wrap = repeat ? GL_REPEAT : GL_CLAMP;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
}

void passFilter(TTexFilter filter) {
    if (filter != glnearest && filter != gllinear)
        return;
    const GLint value = filter == gllinear ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, value);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, value);
}

void passEnvironment(TTexEnvMode mode) {
    switch (mode) {
        case glmodulate:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        case gldecal:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
        case glblend:
            return glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND);
    }
}

}  // namespace

TOglTexture::TOglTexture(TZkOglCanvas* canvas) : canvas_(canvas) {}

TZkOglCanvas* TOglTexture::canvas() const {
    return qobject_cast<TZkOglCanvas*>(canvas_.data());
}

// The objects of the canvas's context, which is current then; null without one.
TextureObjects* TOglTexture::objects() const {
    TZkOglCanvas* owner = canvas();
    return owner && owner->CheckCurrent() ? owner->Textures() : nullptr;
}

PTextureItem TOglTexture::FindPicture(const QString& name) {
    const TZkOglCanvas* owner = canvas();
    if (!owner || !owner->IsPainting())
        return TTexture::FindPicture(name);
    if (missing_.contains(name) && ZkIndexOfTexture(name) < 0)
        return nullptr;
    PTextureItem item = TTexture::FindPicture(name);
    if (!item)
        missing_.insert(name);
    return item;
}

void TOglTexture::SetPixels(const TPixels& pixels) {
    TTexture::SetPixels(pixels);
    if (TextureObjects* all = objects())
        all->Bind(pixels);
}

void TOglTexture::SetVisible(bool visible) {
    const qint64 bytes = 3 * qint64(getwidth()) * getHeight();
    const bool isThere = bytes > 0 && GetPixels() && qint64(GetPixels()->size()) >= bytes;
    TextureObjects* all = objects();
    const bool shown = visible && isThere && all;
    if (shown) {
        all->Upload(GetPixels(), getwidth(), getHeight());
        all->Bind(GetPixels());
        glEnable(GL_TEXTURE_2D);
    } else {
        glDisable(GL_TEXTURE_2D);
    }
    TTexture::SetVisible(shown);
}

bool TOglTexture::GetREpeat() const {
    objects();
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    return wrap == GL_REPEAT;
}

void TOglTexture::SetRepeat(bool repeat) {
    TTexture::SetRepeat(repeat);
    objects();
    passRepeat(repeat);
}

TTexFilter TOglTexture::GetFilter() const {
    objects();
    GLint filter = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
    return filter == GL_LINEAR ? gllinear : glnearest;
}

void TOglTexture::SetFilter(TTexFilter filter) {
    TTexture::SetFilter(filter);
    objects();
    passFilter(filter);
}

TTexEnvMode TOglTexture::GetEnvmode() const {
    objects();
    GLint mode = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    if (mode == GL_BLEND)
        return glblend;
    return mode == GL_DECAL ? gldecal : glmodulate;
}

void TOglTexture::SetEnvmode(TTexEnvMode mode) {
    TTexture::SetEnvmode(mode);
    objects();
    passEnvironment(mode);
}

void TOglTexture::Pass(TextureObjects& objects, const TTextureKind& kind) {
    if (!kind.Visible) {
        glDisable(GL_TEXTURE_2D);
        return;
    }
    objects.Bind(kind.Pixels);
    passEnvironment(kind.EnvMode);
    passFilter(kind.Filter);
    passRepeat(kind.Repeat);
    glEnable(GL_TEXTURE_2D);
}

void TOglTexture::SettextureKind(const TTextureKind& kind) {
    PrintLn(QStringLiteral("SetTextureKind"));
    const Telling telling(*this);  // the bracket may repaint, and user code then delete the canvas
    const ChangeBracket bracket(canvas());
    TTexture::SettextureKind(kind);
}

void TOglTexture::SetPicture(const PicName& name) {
    const Telling telling(*this);
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
