#include "textureregistry.h"

#include <zk/host/message.h>
#include <zk/host/picture.h>

#include <QDir>
#include <QHash>

#include <algorithm>
#include <utility>

namespace zk {

namespace {

struct Registry {
    std::vector<PTextureItem> items;
    /// What names were found as. A picture that is added goes to the end, so that what was found before stays the
    /// first.
    QHash<QString, int> found;
};

Registry& registry() {
    static Registry theRegistry;
    return theRegistry;
}

// `make`: an item under the name, with its loading done.
template <class Make>
int add(const QString& name, std::uint8_t& failed, Make make) {
    if (const int index = ZkIndexOfTexture(name); index >= 0)
        return index;
    failed = 0;
    auto item = make();
    if (failed != 0)
        return -1;
    registry().items.push_back(std::move(item));
    return int(registry().items.size()) - 1;
}

void remove(std::size_t index) {
    const PTextureItem item = std::exchange(registry().items[index], nullptr);
    registry().found.clear();
    Q_EMIT TextureNews::Get().Removed(item->Pixels);
}

}  // namespace

// --- one picture ----------------------------------------------------------------------------------------------------

TTextureItem::TTextureItem(const QString& name, std::uint8_t& Failed) : Name(name) {
    Failed = MakeByteArray() ? 1 : 0;
}

TTextureItem::TTextureItem(const QString& name, const QImage& picture, std::uint8_t& Failed) : Name(name) {
    Failed = take(ScaledToPowerOfTwo(picture)) ? 1 : 0;
}

bool TTextureItem::MakeByteArray() {
    const std::optional<PictureFormat> format = PictureFormatOf(Name);
    if (!format) {
        take({});
        ShowMessage(QStringLiteral("unknown filetype: ") + Name);
        return true;
    }
    return take(LoadPicture(Name, *format));
}

bool TTextureItem::take(const QImage& picture) {
    Pixels.reset();
    Width = picture.width();
    Height = picture.height();
    if (picture.isNull()) {
        if (PictureFormatOf(Name))
            ShowMessage(QStringLiteral("can't load texture: ") + Name);
        return true;
    }
    const std::size_t width = std::size_t(Width);
    const std::size_t height = std::size_t(Height);
    auto bytes = std::make_shared<std::vector<std::uint8_t>>(width * height * 3);
    // Column by column: where two of them meet, the later one counts.
    for (std::size_t x = 0; x < std::min(width, height); ++x) {  // those behind fall outside
        const std::size_t rows = std::min(height, width * height - x * width);
        std::uint8_t* to = bytes->data() + 3 * x * width;
        for (std::size_t y = 0; y < rows; ++y) {
            const QRgb pixel = reinterpret_cast<const QRgb*>(picture.constScanLine(int(y)))[x];
            *to++ = std::uint8_t(qRed(pixel));
            *to++ = std::uint8_t(qGreen(pixel));
            *to++ = std::uint8_t(qBlue(pixel));
        }
    }
    Pixels = std::move(bytes);
    return false;
}

// --- the registry ---------------------------------------------------------------------------------------------------

const std::vector<PTextureItem>& GlbTextures() {
    return registry().items;
}

int ZkIndexOfTexture(const QString& Name) {
    if (Name.isEmpty())
        return -1;
    Registry& all = registry();
    const QString name = Name.toUpper();
    if (const auto known = all.found.constFind(name); known != all.found.constEnd())
        return *known;
    for (std::size_t i = 0; i < all.items.size(); ++i) {
        if (all.items[i] && all.items[i]->Name.toUpper().contains(name)) {
            all.found.insert(name, int(i));
            return int(i);
        }
    }
    return -1;
}

int ZkAddtexture(const QString& Name, std::uint8_t& Failed) {
    return add(Name, Failed, [&] { return std::make_shared<TTextureItem>(Name, Failed); });
}

void ZkAddBitmaptexture(const QString& Name, const QImage& Bitmap) {
    QString file = QDir::tempPath();
    if (!file.endsWith(u'/'))
        file += u'/';
    file += Name + QStringLiteral(".bmp");
    std::uint8_t failed = 0;
    add(file, failed, [&] { return std::make_shared<TTextureItem>(file, Bitmap, failed); });
}

PTextureItem ZkgetTextureItem(const QString& Name) {
    std::uint8_t failed = 0;
    const int index = ZkAddtexture(Name, failed);
    return index < 0 ? nullptr : registry().items[std::size_t(index)];
}

void ZkRemoveTexture(const QString& Name) {
    if (const int index = ZkIndexOfTexture(Name); index >= 0)
        remove(std::size_t(index));
}

void ZkRemoveTextures() {
    for (std::size_t i = registry().items.size(); i-- > 0;)
        if (registry().items[i])
            remove(i);
}

TextureNews& TextureNews::Get() {
    static TextureNews news;
    return news;
}

}  // namespace zk
