// The program that users edit forms with, as it is installed, with the plugin.
#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace {

TEST(ProgramTest, DesignerShowsTheSceneOnTheForm) {
    const auto ofThePicture = [] {
        const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        int count = 0;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x)
                count += screen.pixelColor(x, y) == QColor(40, 60, 90);
        }
        return count;
    };
    ASSERT_EQ(ofThePicture(), 0);
    QProcess designer;
    designer.setProcessChannelMode(QProcess::ForwardedChannels);
    designer.start(QStringLiteral(ZKOGL_DESIGNER_PROGRAM), {QStringLiteral(ZKOGL_FORMS "/scene.ui")});
    ASSERT_TRUE(designer.waitForStarted());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return ofThePicture() > 25000 || designer.state() == QProcess::NotRunning; }, 120000));
    const int background = ofThePicture();
    EXPECT_GT(background, 25000);
    EXPECT_LT(background, 196 * 196 - 500) << "the box";
    designer.terminate();  // without asking whether to save
    if (!designer.waitForFinished(20000))
        designer.kill();
}

}  // namespace
