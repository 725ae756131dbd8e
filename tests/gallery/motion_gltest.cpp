#include "glform.h"
#include "mainwindow.h"

#include <zk/_zkoglcanvas/rendercontext.h>

#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

/// The page of what moves, with its time driven.
class Motion : public testing::Test {
  protected:
    Motion() {
        TTimer::DriveTime(true);
        window->setGeometry(20, 20, 1100, 720);
        window->ShowMotion(true);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    ~Motion() override {
        window.reset();
        TTimer::DriveTime(false);
        EXPECT_EQ(messages.Take(), QStringList());
    }

    gallery::MotionPage* page() { return window->Motion(); }
    QImage shown(const QWidget* widget) {
        GlForm::Settle();
        const QPoint corner = widget->mapToGlobal(QPoint(0, 0));
        return window->screen()->grabWindow(0, corner.x(), corner.y(), widget->width(), widget->height()).toImage();
    }
    QImage picture() { return shown(page()->Control()); }

    MessageCatcher messages;
    std::unique_ptr<gallery::MainWindow> window = std::make_unique<gallery::MainWindow>();
};

}  // namespace

TEST_F(Motion, TheCarouselTurnsAndItsSeatsRideInTurn) {
    page()->balloonFlies->setChecked(false);
    EXPECT_EQ(page()->Ride()->SeatCount(), 8);
    const QImage before = picture();
    const double lowest = page()->Ride()->HeightOf(0);
    TTimer::AdvanceTime(40);
    EXPECT_DOUBLE_EQ(page()->Ride()->Angle(), 1.2);
    EXPECT_FALSE(picture() == before);
    TTimer::AdvanceTime(40 * 12);
    // The first seat has gone up since its first tick, the fifth one since its thirteenth, the last one not yet.
    EXPECT_NEAR(page()->Ride()->HeightOf(0), lowest + 12 * 0.04, 1e-9);
    EXPECT_NEAR(page()->Ride()->HeightOf(4), lowest, 1e-9);
    EXPECT_EQ(page()->Ride()->HeightOf(7), lowest);
    TTimer::AdvanceTime(40 * 13);
    EXPECT_NEAR(page()->Ride()->HeightOf(0), lowest + 25 * 0.04, 1e-9) << "at its highest";
    TTimer::AdvanceTime(40 * 25);
    EXPECT_NEAR(page()->Ride()->HeightOf(0), lowest, 1e-9);
    TTimer::AdvanceTime(40 * (300 - 51));
    EXPECT_NEAR(std::remainder(page()->Ride()->Angle(), 360), 0, 1e-9) << "300 ticks are one turn";
    page()->carouselTurns->setChecked(false);
    const QImage still = picture();
    TTimer::AdvanceTime(4000);
    EXPECT_TRUE(picture() == still);
}

TEST_F(Motion, TheBalloonFliesRound) {
    page()->carouselTurns->setChecked(false);
    const TXYZ start = page()->Balloon()->GetTranslation();
    const QImage before = picture();
    TTimer::AdvanceTime(3000);
    EXPECT_EQ(page()->Balloon()->GetTranslation(), page()->BalloonWay()->GetActualPosition());
    EXPECT_GT(std::fabs(page()->Balloon()->GetTranslation().x - start.x), 3);
    EXPECT_FALSE(picture() == before);
    TTimer::AdvanceTime(9000);
    EXPECT_EQ(page()->Balloon()->GetTranslation(), start);
    EXPECT_TRUE(picture() == before) << "a whole run ends where it began";
}

TEST_F(Motion, TheEyeTravelsAndTheCubeWithIt) {
    page()->carouselTurns->setChecked(false);
    page()->balloonFlies->setChecked(false);
    const QImage before = picture();
    const QImage cube = shown(page()->Navigator());
    page()->eyeTravels->setChecked(true);
    TTimer::AdvanceTime(6000);
    const TBAse view = page()->Canvas()->GetprojectionBAse();
    EXPECT_EQ(view.ZAxis, page()->EyeWay()->GetActualDirection());
    EXPECT_EQ(page()->Navigator()->GetBase().ZAxis, view.ZAxis);
    EXPECT_FALSE(picture() == before);
    EXPECT_FALSE(shown(page()->Navigator()) == cube);
    // a hand on the cube, and the eye stops
    QTest::keyClick(page()->Navigator(), Qt::Key_Left);
    EXPECT_FALSE(page()->eyeTravels->isChecked());
    EXPECT_FALSE(page()->EyeWay()->GetActive());
    const QImage turned = picture();
    TTimer::AdvanceTime(4000);
    EXPECT_TRUE(picture() == turned);
    page()->fromTheFront->click();
    EXPECT_TRUE(picture() == before);
    EXPECT_TRUE(shown(page()->Navigator()) == cube || page()->Navigator()->hasFocus());
}

TEST_F(Motion, DraggingTheCubeTurnsThePicture) {
    page()->carouselTurns->setChecked(false);
    page()->balloonFlies->setChecked(false);
    const QImage before = picture();
    const TZKOglNav* navigator = page()->Navigator();
    const QPoint middle = navigator->mapTo(window.get(), navigator->rect().center());
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, middle);
    QTest::mouseMove(window->windowHandle(), middle + QPoint(20, -10));
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, middle + QPoint(20, -10));
    EXPECT_FALSE(picture() == before);
    EXPECT_EQ(page()->Canvas()->GetprojectionBAse(), TZKOglNav::UpdateBase(navigator->GetBase()));
}

TEST_F(Motion, NothingMovesWhileThePageIsNotShown) {
    int swaps = 0;
    page()->Canvas()->Context()->SetSwap([&swaps](RenderContext& context) {
        ++swaps;
        context.SwapBuffers();
    });
    TTimer::AdvanceTime(400);
    EXPECT_GT(swaps, 0);
    EXPECT_FALSE(window->findChild<QDockWidget*>("controls")->isVisible())
        << "the controls are those of the other page";
    window->ShowMotion(false);
    EXPECT_TRUE(window->findChild<QDockWidget*>("controls")->isVisible());
    GlForm::Settle();
    const double angle = page()->Ride()->Angle();
    swaps = 0;
    TTimer::AdvanceTime(4000);
    EXPECT_EQ(page()->Ride()->Angle(), angle);
    EXPECT_EQ(swaps, 0);
    window->ShowMotion(true);
    GlForm::Settle();
    TTimer::AdvanceTime(400);
    EXPECT_NE(page()->Ride()->Angle(), angle);
    window->hide();
    GlForm::Settle();
    const double hidden = page()->Ride()->Angle();
    TTimer::AdvanceTime(4000);
    EXPECT_EQ(page()->Ride()->Angle(), hidden);
}

TEST_F(Motion, ItGoesInTheMiddleOfAMove) {
    QObject::connect(page()->BalloonWay(), &TZKOglWay::OnTimer, [this] { delete page(); });
    TTimer::AdvanceTime(40);
    GlForm::Settle();
}
