#include "glform.h"
#include "mainwindow.h"

#include <zk/_zkoglcanvas/rendercontext.h>

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

const QColor background(38, 46, 58);

// A byte goes to OpenGL as byte / 256 and comes back as a byte of 255.
bool isNear(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2 &&
           std::abs(a.blue() - b.blue()) <= 2;
}

double differingShare(const QImage& a, const QImage& b) {
    if (a.size() != b.size())
        return 1;
    int differing = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            differing += !isNear(a.pixelColor(x, y), b.pixelColor(x, y));
    return double(differing) / (double(a.width()) * a.height());
}

double brightness(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            sum += image.pixelColor(x, y).lightnessF();
    return sum;
}

class Gallery : public testing::Test {
  protected:
    Gallery() {
        window->setGeometry(20, 20, 1100, 720);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    ~Gallery() override { EXPECT_EQ(messages.Take(), QStringList()); }

    zk::TZkOglCanvas* canvas() { return window->Canvas(); }
    gallery::SidePanel* panel() { return window->Panel(); }
    gallery::Boxes* boxes() { return window->Shapes(); }
    int indexOf(const char* name) { return int(boxes()->Names().indexOf(QString::fromLatin1(name))); }

    QRect client() const {
        const QWidget* control = window->Control();
        return {control->mapToGlobal(control->contentsRect().topLeft()), control->contentsRect().size()};
    }
    /// What the user sees of the picture.
    QImage picture() {
        GlForm::Settle();
        const QRect area = client();
        return window->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    }
    QColor pixel(const QPoint& at) {
        const QImage image = picture();
        return image.pixelColor(at * image.devicePixelRatio());
    }

    QPoint inWindow(const QPoint& at) const {
        const QWidget* control = window->Control();
        return control->mapTo(window.get(), control->contentsRect().topLeft() + at);
    }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(window->windowHandle(), button, Qt::NoModifier, inWindow(at));
    }
    /// Moves the display's own pointer: a made-up move would not reach the native window that the picture is in.
    void moveTo(const QPoint& at) {
        QCursor::setPos(client().topLeft() + at);
        GlForm::Settle();
    }

    /// The name of the nearest box within a few pixels of a place; empty for none, and where there are several.
    QString nearestAround(const QPoint& at) {
        QString name;
        for (const QPoint& step : {QPoint(0, 0), QPoint(-5, -5), QPoint(5, -5), QPoint(-5, 5), QPoint(5, 5)}) {
            const QPoint probe = at + step;
            if (!canvas()->Select(probe.x(), probe.y()))
                return {};
            auto* box = dynamic_cast<QObject*>(HitTarget::Of(canvas()->Hits().back().HitObject));
            if (!box || (!name.isEmpty() && name != box->objectName()))
                return {};
            name = box->objectName();
        }
        return name;
    }
    std::optional<QPoint> placeOf(const QString& name) {
        for (int y = 10; y < client().height(); y += 8)
            for (int x = 10; x < client().width(); x += 8)
                if (nearestAround({x, y}) == name)
                    return QPoint(x, y);
        return std::nullopt;
    }

    MessageCatcher messages;
    std::unique_ptr<gallery::MainWindow> window = std::make_unique<gallery::MainWindow>();
};

}  // namespace

TEST_F(Gallery, TheFirstPictureIsWhole) {
    const QImage image = picture();
    for (const QPoint& corner : {QPoint(4, 4), QPoint(image.width() - 5, 4), QPoint(4, image.height() - 5),
                                 QPoint(image.width() - 5, image.height() - 5)})
        EXPECT_TRUE(isNear(image.pixelColor(corner), background)) << corner.x() << " " << corner.y();
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors += image.pixel(x, y);
    EXPECT_GT(colors.size(), 40);
}

TEST_F(Gallery, EveryBoxCanBeClickedWhereItIsSeen) {
    for (const QString& name : boxes()->Names()) {
        SCOPED_TRACE(name.toStdString());
        const std::optional<QPoint> place = placeOf(name);
        ASSERT_TRUE(place);
        const QColor before = pixel(*place);
        click(*place, Qt::RightButton);
        EXPECT_EQ(window->ClickText(), QStringLiteral("Clicked: %1 (right)").arg(name));
        EXPECT_FALSE(isNear(pixel(*place), before)) << "another box is seen there";
    }
}

TEST_F(Gallery, ALeftClickLiftsABoxAndTheNextPutsItBack) {
    const int brick = indexOf("Brick");
    const QPoint place = window->PixelOf(boxes()->MiddleOf(brick));
    const QImage before = picture();
    int swaps = 0;
    canvas()->Context()->SetSwap([&swaps](RenderContext& context) {
        ++swaps;
        context.SwapBuffers();
    });

    click(place);
    EXPECT_EQ(window->ClickText(), "Clicked: Brick (left)");
    EXPECT_EQ(swaps, 2) << "one repaint";
    EXPECT_TRUE(boxes()->IsLifted(brick));
    EXPECT_EQ(panel()->shapes->currentRow(), brick);
    EXPECT_GT(differingShare(picture(), before), 0.005);
    const QPoint lifted = window->PixelOf(boxes()->MiddleOf(brick));
    EXPECT_LT(lifted.y(), place.y() - 20);

    click(lifted);
    EXPECT_FALSE(boxes()->IsLifted(brick));
    EXPECT_LT(differingShare(picture(), before), 0.001);
}

TEST_F(Gallery, WhatStandsOnABoxIsLiftedWithIt) {
    const TXYZ lid = boxes()->MiddleOf(indexOf("Lid"));
    click(window->PixelOf(boxes()->MiddleOf(indexOf("Cube"))));
    EXPECT_EQ(window->ClickText(), "Clicked: Cube (left)");
    EXPECT_GT(boxes()->MiddleOf(indexOf("Lid")).y, lid.y + 1);
    EXPECT_FALSE(boxes()->IsLifted(indexOf("Lid")));
}

TEST_F(Gallery, RightClicksGoThroughTheMaterials) {
    const int tower = indexOf("Tower");
    const QPoint place = window->PixelOf(boxes()->MiddleOf(tower));
    QStringList names;
    do {
        names += boxes()->MaterialName(tower);
        click(place, Qt::RightButton);
        ASSERT_LT(names.size(), 20);
    } while (boxes()->MaterialName(tower) != names.constFirst());
    EXPECT_EQ(names.size(), 8);
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_F(Gallery, AClickOnTheBackgroundSaysSoAndChangesNothing) {
    const QImage before = picture();
    click({5, 5});
    EXPECT_EQ(window->ClickText(), "Clicked: the background (left)");
    EXPECT_LT(differingShare(picture(), before), 0.001);
}

TEST_F(Gallery, TheStatusBarNamesWhatIsUnderThePointer) {
    moveTo(window->PixelOf(boxes()->MiddleOf(indexOf("Tower"))));
    EXPECT_EQ(window->PointerText(), "Under the pointer: Tower");
    moveTo({5, 5});
    EXPECT_EQ(window->PointerText(), "Under the pointer: the background");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(window->Control(), &leave);
    EXPECT_EQ(window->PointerText(), QString());
    EXPECT_EQ(window->ClickText(), "Click a box: left lifts it, right gives it the next material");
}

TEST_F(Gallery, ClicksMeetInAPerspectiveRotatedView) {
    panel()->angle->SetValue(30);
    panel()->rotation->SetValue(60);
    panel()->moveX->SetValue(1);
    for (const char* name : {"Brick", "Step", "Plank"}) {
        SCOPED_TRACE(name);
        const QPoint place = window->PixelOf(boxes()->MiddleOf(indexOf(name)));
        const QColor before = pixel(place);
        click(place, Qt::RightButton);
        EXPECT_EQ(window->ClickText(), QStringLiteral("Clicked: %1 (right)").arg(name));
        EXPECT_FALSE(isNear(pixel(place), before));
    }
}

TEST_F(Gallery, EachSliderChangesThePictureAndResetBringsItBack) {
    const QImage before = picture();
    const auto drive = [&](gallery::ValueSlider* slider, double value, const char* text) {
        SCOPED_TRACE(slider->Slider()->objectName().toStdString());
        const QImage start = picture();
        slider->SetValue(value);
        EXPECT_EQ(slider->Text(), QString::fromUtf8(text));
        EXPECT_GT(differingShare(picture(), start), 0.01);
    };
    drive(panel()->zoom, 1.5, "150 %");
    EXPECT_NEAR(canvas()->GetZoomFactor(), 1.5, 1e-9);
    drive(panel()->moveX, 2, "2.0 cm");
    drive(panel()->moveY, -1.5, "-1.5 cm");
    drive(panel()->angle, 25, "25°");
    EXPECT_NEAR(canvas()->GetBlickwinkel(), 25, 1e-9);
    drive(panel()->moveZ, -3, "-3.0 cm");
    EXPECT_EQ(canvas()->GetTranslation(), (TXYZ{2, -1.5, -3}));
    drive(panel()->rotation, -90, "-90°");
    EXPECT_NEAR(canvas()->Getdrehwinkel(), -90, 1e-9);
    const QImage aboutUpright = picture();
    panel()->axis->setCurrentIndex(gallery::SidePanel::towardsViewer);
    EXPECT_GT(differingShare(picture(), aboutUpright), 0.01);

    boxes()->ToggleLift(0);
    boxes()->NextMaterial(1);
    QTest::mouseClick(panel()->reset, Qt::LeftButton);
    EXPECT_EQ(panel()->angle->Text(), "parallel");
    EXPECT_LT(differingShare(picture(), before), 0.001);
}

TEST_F(Gallery, KeysDriveTheSliders) {
    panel()->angle->Slider()->setFocus();
    QTest::keyClick(panel()->angle->Slider(), Qt::Key_End);
    EXPECT_NEAR(canvas()->GetBlickwinkel(), 45, 1e-9);
    QTest::keyClick(panel()->angle->Slider(), Qt::Key_Home);
    QTest::keyClick(panel()->angle->Slider(), Qt::Key_Right);
    EXPECT_EQ(canvas()->GetBlickwinkel(), 0) << "one degree is the parallel projection";
    EXPECT_EQ(panel()->angle->Text(), "parallel");
}

TEST_F(Gallery, TheCheckBoxesDriveTheLight) {
    const QImage lit = picture();
    QTest::mouseClick(panel()->light, Qt::LeftButton, Qt::NoModifier, {8, panel()->light->height() / 2});
    EXPECT_LT(brightness(picture()), brightness(lit) * 0.8);
    QTest::mouseClick(panel()->light, Qt::LeftButton, Qt::NoModifier, {8, panel()->light->height() / 2});
    EXPECT_LT(differingShare(picture(), lit), 0.001);
    panel()->twoSided->setChecked(true);
    EXPECT_TRUE(canvas()->GetLightModelTwoSided());
}

TEST_F(Gallery, TheBackgroundFollowsTheDialog) {
    panel()->background->click();
    auto* dialog = window->findChild<QColorDialog*>();
    ASSERT_TRUE(dialog);
    dialog->setCurrentColor(Qt::darkGreen);
    EXPECT_TRUE(isNear(canvas()->GetBackgroundQColor(), Qt::darkGreen));
    dialog->reject();
    EXPECT_TRUE(isNear(pixel({4, 4}), background));

    panel()->background->click();
    GlForm::Settle();
    dialog = window->findChild<QColorDialog*>();
    ASSERT_TRUE(dialog);
    dialog->setCurrentColor(Qt::darkGreen);
    dialog->accept();
    EXPECT_TRUE(isNear(pixel({4, 4}), Qt::darkGreen));
}

TEST_F(Gallery, TheListLiftsABoxToo) {
    panel()->shapes->setCurrentRow(indexOf("Die"));
    Q_EMIT panel()->shapes->itemActivated(panel()->shapes->currentItem());
    EXPECT_TRUE(boxes()->IsLifted(indexOf("Die")));
    EXPECT_EQ(window->ClickText(), "Die is lifted");
}

TEST_F(Gallery, StaysWholeAtAnySize) {
    for (const QSize& size : {QSize(1, 1), QSize(300, 200), QSize(1200, 900), QSize(700, 900), QSize(1100, 720)}) {
        window->resize(size);
        const QImage image = picture();
        EXPECT_TRUE(isNear(image.pixelColor(image.width() - 3, 3), background) || size.width() < 400)
            << size.width() << " x " << size.height();
    }
    click(window->PixelOf(boxes()->MiddleOf(indexOf("Tower"))));
    EXPECT_EQ(window->ClickText(), "Clicked: Tower (left)");
}

TEST_F(Gallery, ComesBackAfterHiding) {
    const QImage before = picture();
    window->hide();
    panel()->zoom->SetValue(2);
    panel()->zoom->SetValue(1);
    GlForm::Settle();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    EXPECT_LT(differingShare(picture(), before), 0.001);
}

TEST_F(Gallery, GoesWhileTheMouseDragsInThePicture) {
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow({300, 300}));
    moveTo({320, 310});
    window->close();
    window.reset();
    GlForm::Settle();
}

TEST_F(Gallery, GoesWhileASliderIsDragged) {
    QSlider* slider = panel()->rotation->Slider();
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, slider->rect().center());
    QTest::mouseMove(slider, slider->rect().center() + QPoint(10, 0));
    window->close();
    window.reset();
    GlForm::Settle();
}

TEST_F(Gallery, GoesWithItsDialogOpen) {
    panel()->background->click();
    GlForm::Settle();
    window.reset();
    GlForm::Settle();
}
