#pragma once

#include <zk/_zkcomtypes/texture.h>

#include <QPointer>

namespace zk {

class TZkOglCanvas;

/// A texture that is OpenGL's current one: its setters pass filter, wrap, environment and picture on to GL_TEXTURE_2D,
/// and the first three are read back from OpenGL. Acts on the context that is current.
class TOglTexture : public TTexture {
    Q_OBJECT
  public:
    explicit TOglTexture(TZkOglCanvas* canvas = nullptr);

    /// Visible means: a picture is there, has gone to OpenGL, and texturing is on. Without a picture it stays off.
    void SetVisible(bool visible) override;
    bool GetREpeat() const override;
    void SetRepeat(bool repeat) override;
    TTexFilter GetFilter() const override;
    /// A value other than the two named ones leaves OpenGL's filters as they are.
    void SetFilter(TTexFilter filter) override;
    TTexEnvMode GetEnvmode() const override;
    void SetEnvmode(TTexEnvMode mode) override;
    void SettextureKind(const TTextureKind& kind) override;
    void SetPicture(const PicName& name) override;
    void SetWorldheight(double height) override;
    void SetWorldWidth(double width) override;

  private:
    TZkOglCanvas* canvas() const;
    void passTextureScale();

    QPointer<QObject> canvas_;
};

}  // namespace zk
