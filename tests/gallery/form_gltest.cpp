// The gallery's window is a form: uic and the loader make the same of it.
#include "allcomponents.h"
#include "glform.h"
#include "ui_mainwindow.h"

#include <zk/_zkoglcanvas.h>
#include <zk/forms.h>

#include <QMainWindow>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using namespace zk::test;

TEST(GalleryForm, IsTheSameThroughUicAndThroughTheLoader) {
    MessageCatcher messages;
    QImage tile(64, 64, QImage::Format_RGB32);
    tile.fill(Qt::lightGray);
    ZkAddBitmaptexture(QStringLiteral("gallery-tile"), tile);

    QMainWindow made;
    gallery::Ui::MainWindow ui;
    ui.setupUi(&made);
    FormLoader loader;
    const std::unique_ptr<QWidget> loaded(loader.LoadFile(QStringLiteral(GALLERY_FORM)));
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loader.Faults().empty());

    GlForm::Settle();

    // What the page of what moves has of its own is not in the form.
    const QStringList values = ValuesOf(made).filter(QRegularExpression("^(?!navigator\\.)"));
    EXPECT_TRUE(values.contains("tower.Scene: scene")) << "the references are among them";
    EXPECT_GT(values.size(), 300);
    EXPECT_TRUE(values.contains("canvas.WinControl: control"));
    const QStringList loadedValues = ValuesOf(*loaded);
    ASSERT_EQ(loadedValues.size(), values.size());
    for (qsizetype i = 0; i < values.size(); ++i)
        EXPECT_EQ(loadedValues[i].toStdString(), values[i].toStdString());

    auto* canvas = loaded->findChild<TZkOglCanvas*>("canvas");
    ASSERT_TRUE(canvas);
    const QImage picture = ui.canvas->Picture({600, 450});
    EXPECT_EQ(canvas->Picture({600, 450}), picture);
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            colors += picture.pixel(x, y);
    EXPECT_GT(colors.size(), 100) << "there is something to be seen";
    ZkRemoveTexture(QStringLiteral("gallery-tile.bmp"));
    EXPECT_EQ(messages.Take(), QStringList());
}
