// Pictures under Wayland: what the compositor shows, as it takes a picture of its screen.
#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>
#include <zk/host/glsurface.h>

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

using namespace zk;

namespace {

const QColor green(0, 254, 0);
const QColor red(254, 0, 0);

QImage screen() {
    const QTemporaryDir folder;
    QProcess shooter;
    shooter.setWorkingDirectory(folder.path());
    shooter.start("weston-screenshooter", {});
    EXPECT_TRUE(shooter.waitForFinished(20000));
    const QStringList files = QDir(folder.path()).entryList({"*.png"});
    EXPECT_EQ(files.size(), 1) << shooter.readAllStandardError().toStdString();
    return files.isEmpty() ? QImage() : QImage(QDir(folder.path()).filePath(files.front()));
}

int count(const QImage& image, const QColor& color) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            pixels += qAbs(pixel.red() - color.red()) <= 1 && qAbs(pixel.green() - color.green()) <= 1 &&
                      qAbs(pixel.blue() - color.blue()) <= 1;
        }
    return pixels;
}

/// How many pixels of the screen have a colour; asks again for a while, as the compositor shows things when it likes.
int shown(const QColor& color, int expected) {
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        QTest::qWait(100);
        const int pixels = count(screen(), color);
        if (pixels == expected || clock.hasExpired(8000))
            return pixels;
    }
}

/// A control of 300 x 300 pixels with a red box of 60 x 60 in the middle of a green ground.
struct Form {
    Form() {
        window->resize(400, 400);
        control = new TZKOglControl(window.get());
        control->SetBevelKind(bevel::bkNone);
        control->setGeometry(50, 50, 300, 300);
        canvas = new TZkOglCanvas(window.get());
        canvas->SetUnitsPerCm(30);
        canvas->SetColor(0x00FF00);
        auto* scene = new TZKOglScene(window.get());
        scene->SetZkOglCanvas(canvas);
        box = new TZKOglBox(window.get());
        box->SetA(2);
        box->SetB(2);
        box->SetC(2);
        box->Settranslation({-1, -1, -1});
        Tmaterial* material = box->getAttributes()->getMaterial();
        material->SetAmbient(0);
        material->SetDiffuse(0);
        material->SetEmission(0x0000FF);
        box->SetDisplayList(scene);
        box->SetVisible(true);
        canvas->SetWinControl(control);
        window->show();
    }

    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    TZKOglControl* control;
    TZkOglCanvas* canvas;
    TZKOglBox* box;
};

constexpr int boxPixels = 60 * 60;
constexpr int groundPixels = 300 * 300 - boxPixels;

}  // namespace

TEST(Wayland, ThePictureIsOnTheScreen) {
    ASSERT_EQ(QGuiApplication::platformName(), "wayland");
    const Form form;
    ASSERT_TRUE(form.canvas->HasContext());
    EXPECT_EQ(shown(red, boxPixels), boxPixels);
    EXPECT_EQ(shown(green, groundPixels), groundPixels);
    form.box->SetVisible(false);
    EXPECT_EQ(shown(green, 300 * 300), 300 * 300) << "a repaint is shown";
}

TEST(Wayland, ItFollowsItsControl) {
    const Form form;
    form.control->resize(200, 320);
    EXPECT_EQ(shown(green, 200 * 320 - boxPixels), 200 * 320 - boxPixels);
    form.control->hide();
    EXPECT_EQ(shown(green, 0), 0);
    form.control->show();
    EXPECT_EQ(shown(green, 200 * 320 - boxPixels), 200 * 320 - boxPixels);
    form.window->hide();
    EXPECT_EQ(shown(green, 0), 0);
    form.window->show();
    EXPECT_EQ(shown(green, 200 * 320 - boxPixels), 200 * 320 - boxPixels);
}

TEST(Wayland, AControlMovesToAnotherWindow) {
    const Form form;
    ASSERT_EQ(shown(red, boxPixels), boxPixels);
    QWidget other;
    other.resize(400, 400);
    form.control->setParent(&other);
    form.control->show();
    other.show();
    EXPECT_EQ(shown(red, boxPixels), boxPixels);
    form.control->setParent(form.window.get());
    form.control->show();
    EXPECT_EQ(shown(red, boxPixels), boxPixels);
}

TEST(Wayland, AClickMeetsItsShape) {
    const Form form;
    ASSERT_EQ(shown(red, boxPixels), boxPixels);
    int presses = 0;
    QObject::connect(form.box, &TCustomShape::OnMouseDown, [&presses] { ++presses; });
    QTest::mouseClick(form.canvas->Getdc()->Window(), Qt::LeftButton, {}, QPoint(150, 150));
    EXPECT_EQ(presses, 1);
    QTest::mouseClick(form.canvas->Getdc()->Window(), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_EQ(presses, 1);
}

TEST(Wayland, PicturesWithoutAWindow) {
    Form form;
    form.window->hide();
    const QImage picture = form.canvas->Picture({600, 600}, 2);
    EXPECT_EQ(picture.size(), QSize(600, 600));
    EXPECT_EQ(count(picture, red), 4 * boxPixels);
}
