#include "texture.h"

namespace zk {

namespace {

PicName cut(const QString& name) {
    if (name.size() <= PicNameLength)
        return name;
    // not between the two halves of a character
    return name.left(name.at(PicNameLength - 1).isHighSurrogate() ? PicNameLength - 1 : PicNameLength);
}

}  // namespace

TTexture::TTexture(QObject* parent) : TZkgraphicsobject(parent) {
    TTexture::SettextureKind(tkDefault);
    TTexture::SetVisible(false);
}

void TTexture::SetWorldheight(double Value) {
    worldHeight_ = Value;
    ChangeD();
}

void TTexture::SetWorldWidth(double Value) {
    worldWidth_ = Value;
    ChangeD();
}

double TTexture::getWorldHeight() const {
    return worldHeight_;
}
double TTexture::getWorldwidth() const {
    return worldWidth_;
}

TTextureKind TTexture::GettextureKind() const {
    TTextureKind kind;
    kind.Visible = GetVisible();
    kind.EnvMode = GetEnvmode();
    kind.Picture = GetPicture();
    kind.Base = getBAse();
    kind.Filter = GetFilter();
    kind.Width = getwidth();
    kind.Height = getHeight();
    kind.Repeat = GetREpeat();
    kind.WorldWidth = getWorldwidth();
    kind.WorldHeight = getWorldHeight();
    kind.BaseFix = baseFix_;
    kind.Pixels = pixels_;
    return kind;
}

void TTexture::SettextureKind(const TTextureKind& Kind) {
    SetChanging(true);
    const PTextureItem item = Kind.Picture.isEmpty() ? nullptr : FindPicture(Kind.Picture);
    SetPixels(item ? item->Pixels : nullptr);
    width_ = item ? item->Width : 0;
    height_ = item ? item->Height : 0;
    SetWorldWidth(Kind.WorldWidth);
    SetWorldheight(Kind.WorldHeight);
    SetEnvmode(Kind.EnvMode);
    Setbase(Kind.Base);
    SetFilter(Kind.Filter);
    SetRepeat(Kind.Repeat);
    picture_ = cut(Kind.Picture);
    SetbaseFix(Kind.BaseFix);
    SetVisible(Kind.Visible);
    ChangeD();
    SetChanging(false);
}

PTextureItem TTexture::FindPicture(const QString& Name) {
    return ZkgetTextureItem(Name);
}

bool TTexture::GetVisible() const {
    return visible_;
}
bool TTexture::GetREpeat() const {
    return repeat_;
}
TTexFilter TTexture::GetFilter() const {
    return filter_;
}
TTexEnvMode TTexture::GetEnvmode() const {
    return envMode_;
}

void TTexture::SetVisible(bool Value) {
    visible_ = Value;
    ChangeD();
}

void TTexture::SetRepeat(bool Value) {
    repeat_ = Value;
    ChangeD();
}

void TTexture::SetFilter(TTexFilter Value) {
    filter_ = Value;
    ChangeD();
}

void TTexture::SetEnvmode(TTexEnvMode Value) {
    envMode_ = Value;
    ChangeD();
}

void TTexture::SetPicture(const PicName& Name) {
    const PicName name = cut(Name);
    if (name == picture_)
        return;
    TTextureKind kind = GettextureKind();
    kind.Picture = name;
    SettextureKind(kind);
    ChangeD();
}

std::int32_t TTexture::getwidth() const {
    return width_;
}
std::int32_t TTexture::getHeight() const {
    return height_;
}

void TTexture::Setbase(const TBAse& Value) {
    base_ = Value;
    baseSet_ = true;
    ChangeD();
}

TBAse TTexture::getBAse() const {
    return base_;
}

void TTexture::SetWidth(std::int32_t Value) {
    width_ = Value;
    ChangeD();
}

void TTexture::SetHeight(std::int32_t Value) {
    height_ = Value;
    ChangeD();
}

void TTexture::SetPixels(const TPixels& Value) {
    pixels_ = Value;
}

void TTexture::SetbaseFix(bool Value) {
    baseFix_ = Value;
    ChangeD();
}

}  // namespace zk
