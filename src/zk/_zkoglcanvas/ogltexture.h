#pragma once

#include <zk/_zkcomtypes/texture.h>
#include <zk/export.h>

#include <QPointer>
#include <QSet>

namespace zk {

class TextureObjects;
class TZkOglCanvas;

/// A texture that is OpenGL's current one: its setters pass filter, wrap, environment and picture on to GL_TEXTURE_2D,
/// and the first three are read back from OpenGL. They make the canvas's context current.
///
/// Each picture is a texture object of the canvas's context, and goes to OpenGL the first time that it is shown in it.
/// Taking over a description binds the picture's object, so that filter and wrap, which OpenGL keeps with the object,
/// are set for it each time anew: textures that show the same picture do not disturb each other. Without a picture
/// OpenGL's own texture object is bound, which is left to the application.
///
/// While the canvas paints, a picture that could not be loaded is not asked for again: a message in every repaint would
/// be the reason for the next one.
class ZKOGLCANVAS_API TOglTexture : public TTexture {
    Q_OBJECT
  public:
    /// `canvas` is the one in whose context pictures are; not owned, may be null.
    explicit TOglTexture(TZkOglCanvas* canvas = nullptr);

    /// Binds the picture's object.
    void SetPixels(const TPixels& pixels) override;
    /// Visible means: a picture is there, has gone to OpenGL, and texturing is on. Without a picture it stays off, and
    /// with fewer bytes than 3 · width · height there is none.
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

    /// Everything that the description of a texture does to OpenGL, for a picture that has gone to `objects` before.
    static void Pass(TextureObjects& objects, const TTextureKind& kind);

    PTextureItem FindPicture(const QString& name) override;

  private:
    TZkOglCanvas* canvas() const;
    TextureObjects* objects() const;
    void passTextureScale();

    QPointer<QObject> canvas_;
    QSet<QString> missing_;  ///< what could not be loaded in a repaint
};

}  // namespace zk
