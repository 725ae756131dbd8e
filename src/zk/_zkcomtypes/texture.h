#pragma once

#include <zk/_zkcomtypes/graphicsobject.h>
#include <zk/_zkcomtypes/texturekind.h>
#include <zk/_zkcomtypes/textureregistry.h>
#include <zk/export.h>

namespace zk {

/// Which picture is laid onto a surface, and how.
///
/// ```
/// texture->SetPicture("wall.bmp");   // .bmp, .jpg, .jpeg, .ico, .wmf or .emf
/// texture->SetVisible(true);
/// ```
///
/// A new texture is invisible and otherwise `tkDefault`. Setters store and notify without comparing or checking, except
/// where noted. Pictures live in the registry (`GlbTextures`), each file once, however many textures show it. A picture
/// that cannot be loaded is told in a message; the texture keeps its name, has no pixels and size 0, and nothing of it
/// is seen.
class ZKCOMTYPES_API TTexture : public TZkgraphicsobject {
    Q_OBJECT
    Q_PROPERTY(QString Picture READ GetPicture WRITE SetPicture)
    Q_PROPERTY(bool Repeating READ GetREpeat WRITE SetRepeat)
    Q_PROPERTY(zk::TTexFilter Filter READ GetFilter WRITE SetFilter)
    Q_PROPERTY(zk::TTexEnvMode EnvMode READ GetEnvmode WRITE SetEnvmode)
    Q_PROPERTY(bool Visible READ GetVisible WRITE SetVisible)
    Q_PROPERTY(bool BaseFix READ GetbaseFix WRITE SetbaseFix)
    Q_PROPERTY(double WorldWidth READ getWorldwidth WRITE SetWorldWidth)
    Q_PROPERTY(double WorldHeight READ getWorldHeight WRITE SetWorldheight)
  public:
    explicit TTexture(QObject* parent = nullptr);

    /// World size of one repetition along the Y axis of the base.
    virtual void SetWorldheight(double Value);
    /// World size of one repetition along the X axis of the base.
    virtual void SetWorldWidth(double Value);
    /// World size of one repetition along the Y axis of the base.
    virtual double getWorldHeight() const;
    /// World size of one repetition along the X axis of the base.
    virtual double getWorldwidth() const;

    /// The whole description, read through the virtual getters.
    virtual TTextureKind GettextureKind() const;

    /// Takes over a whole description, and loads its picture if it is not registered, inside one batch, through the
    /// virtual setters, so that observers see one change at its end. Pixels, width and height of `Kind` are ignored:
    /// they come with the picture. The name is cut to `PicNameLength` characters.
    virtual void SettextureKind(const TTextureKind& Kind);

    /// Whether the picture is laid on.
    virtual bool GetVisible() const;
    /// Whether the picture is repeated beyond its edges; otherwise the edge goes on.
    virtual bool GetREpeat() const;
    /// How the picture is sampled.
    virtual TTexFilter GetFilter() const;
    /// How the picture is combined with the lit colour beneath.
    virtual TTexEnvMode GetEnvmode() const;
    virtual void SetVisible(bool Value);
    virtual void SetRepeat(bool Value);
    virtual void SetFilter(TTexFilter Value);
    virtual void SetEnvmode(TTexEnvMode Value);

    /// Shows another picture; an empty name is none. The name is cut to `PicNameLength` characters; the current name
    /// again (case counts) changes nothing and notifies nobody. Otherwise notifies twice: at the end of the batch, and
    /// once for the name itself.
    virtual void SetPicture(const PicName& Name);

    /// Size of the picture in pixels, 0 without one.
    virtual std::int32_t getwidth() const;
    /// Height of the picture in pixels, 0 without one.
    virtual std::int32_t getHeight() const;

    /// The frame in which the texture is laid.
    virtual void Setbase(const TBAse& Value);
    virtual TBAse getBAse() const;

    /// Stores the width in pixels; pictures set it themselves.
    virtual void SetWidth(std::int32_t Value);
    /// Stores the height in pixels; pictures set it themselves.
    virtual void SetHeight(std::int32_t Value);

    /// Stores the pixels alone: no notification, and width and height stay as they are. Whoever hands them on must
    /// check that there are 3 · width · height bytes.
    virtual void SetPixels(const TPixels& Value);

    /// Kept with the texture and its description; nothing in the library asks for it.
    void SetbaseFix(bool Value);

    /// The name of the picture file, empty for none.
    PicName GetPicture() const { return picture_; }
    /// See `SetbaseFix`.
    bool GetbaseFix() const { return baseFix_; }
    /// The pixels of the loaded picture, or null.
    const TPixels& GetPixels() const { return pixels_; }

    /// True once `Setbase` was called; the constructor's own defaults count.
    bool IsBaseSet() const { return baseSet_; }

  protected:
    /// The registered picture for a name that is not empty, loaded if need be; null where that is not possible.
    virtual PTextureItem FindPicture(const QString& Name);

    bool visible_ = false;
    double worldWidth_ = 0;
    double worldHeight_ = 0;
    TTexEnvMode envMode_ = glmodulate;
    PicName picture_;
    TPixels pixels_;
    TBAse base_;
    TTexFilter filter_ = glnearest;
    bool baseSet_ = false;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    bool repeat_ = false;
    bool baseFix_ = false;
};

}  // namespace zk
