#include "glform.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/picturekeeper.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

/// What drivers make of a swap.
enum class Swap { Copy, Exchange, Undefined };

/// A swap of a given kind, on top of a window system whose own swap copies. It notes what the user sees after each.
class SwapDouble {
  public:
    SwapDouble(GlForm& form, Swap kind)
        : form_(form), kind_(kind), front_(PictureKeeper::Create(PictureKeeper::Way::Pixels)) {
        form.canvas->Context()->SetSwap([this](RenderContext& context) { swap(context); });
    }
    ~SwapDouble() {
        if (form_.canvas->Context())
            form_.canvas->Context()->SetSwap(nullptr);
    }

    std::vector<QColor> TakeSeen() { return std::exchange(seen_, {}); }
    QPoint watched{150, 150};

  private:
    void swap(RenderContext& context) {
        auto shown = PictureKeeper::Create(PictureKeeper::Way::Pixels);
        shown->Keep(context.Surface().PixelSize());
        context.SwapBuffers();
        if (kind_ == Swap::Exchange) {
            front_->BringBack();  // what was on the screen is in the back buffer now
            front_ = std::move(shown);
        } else if (kind_ == Swap::Undefined) {
            glPushAttrib(GL_COLOR_BUFFER_BIT);
            glClearColor(1, 0, 1, 1);
            glClear(GL_COLOR_BUFFER_BIT);
            glPopAttrib();
        }
        seen_.push_back(form_.PixelAt(watched));
    }

    GlForm& form_;
    Swap kind_;
    std::unique_ptr<PictureKeeper> front_;
    std::vector<QColor> seen_;
};

class Repaint : public testing::TestWithParam<std::tuple<Swap, PictureKeeper::Way>> {};

}  // namespace

TEST_P(Repaint, BothSwapsShowTheNewPicture) {
    const auto [swapKind, way] = GetParam();
    GlForm form;
    form.canvas->Context()->SetKeeping(way);
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    SwapDouble swap(form, swapKind);

    form.canvas->Refresh();
    EXPECT_EQ(swap.TakeSeen(), (std::vector{red, red}));
    box->Settranslation({2, -1, -1});
    EXPECT_EQ(swap.TakeSeen(), (std::vector{black, black}));
    box->Settranslation({-1, -1, -1});
    EXPECT_EQ(swap.TakeSeen(), (std::vector{red, red}));
    for (int i = 0; i < 3; ++i)
        form.canvas->Select(150, 150);
    EXPECT_TRUE(swap.TakeSeen().empty()) << "a pick shows nothing";
    EXPECT_EQ(form.PixelAt({150, 150}), red);
    form.canvas->Refresh();
    EXPECT_EQ(swap.TakeSeen(), (std::vector{red, red}));

    // in another size, too
    form.control->resize(260, 200);
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({130, 100}), red);
    swap.watched = QPoint(130, 100);
    swap.TakeSeen();
    form.canvas->Refresh();
    EXPECT_EQ(swap.TakeSeen(), (std::vector{red, red}));
}

TEST_P(Repaint, WhatIsPaintedBetweenTheTwoIsSeen) {
    const auto [swapKind, way] = GetParam();
    GlForm form;
    form.canvas->Context()->SetKeeping(way);
    form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    SwapDouble swap(form, swapKind);
    form.canvas->BeginPaint();
    EXPECT_EQ(swap.TakeSeen(), std::vector{red});
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_SCISSOR_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(10, 10, 40, 40);
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glPopAttrib();
    form.canvas->EndPaint();
    EXPECT_EQ(swap.TakeSeen(), std::vector{red}) << "the picture is there";
    EXPECT_EQ(form.PixelAt({30, 270}), QColor(0, 255, 0)) << "and what came upon it";
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({30, 270}), black);
}

INSTANTIATE_TEST_SUITE_P(Swaps, Repaint,
                         testing::Combine(testing::Values(Swap::Copy, Swap::Exchange, Swap::Undefined),
                                          testing::Values(PictureKeeper::Way::FramebufferObject,
                                                          PictureKeeper::Way::Pixels)));

// The picture fills the window at once in its new size, also where the driver takes notice of the size only at a swap.
TEST(RepaintSize, TheFirstPictureInANewSizeIsWhole) {
    GlForm form({200, 200});
    form.window->resize(600, 600);
    GlForm::Settle();
    form.canvas->SetColor(0x0000FF);
    for (const QSize& size : {QSize(400, 300), QSize(150, 420), QSize(500, 500), QSize(100, 100)}) {
        form.TakeSwaps();
        form.control->QWidget::resize(size);
        EXPECT_EQ(form.TakeSwaps(), 2);
        for (const QPoint& corner : {QPoint(1, 1), QPoint(size.width() - 2, 1), QPoint(1, size.height() - 2),
                                     QPoint(size.width() - 2, size.height() - 2)})
            EXPECT_EQ(form.PixelAt(corner), red) << corner.x() << ", " << corner.y();
    }
    // a control that a layout makes larger before it is ever shown
    QWidget window;
    auto* control = new TZKOglControl(&window);
    control->SetBevelKind(bevel::bkNone);
    auto* canvas = new TZkOglCanvas(&window);
    canvas->SetWinControl(control);
    canvas->SetColor(0x0000FF);
    window.resize(450, 350);
    control->setGeometry(0, 0, 450, 350);
    window.show();
    std::swap(form.control, control);
    std::swap(form.canvas, canvas);
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({2, 2}), red);
    EXPECT_EQ(form.PixelAt({448, 348}), red);
    std::swap(form.control, control);
    std::swap(form.canvas, canvas);
}

// Keeping the picture is invisible to user code: whatever state it left behind is still there, and cut nothing.
TEST(RepaintState, KeepingAPictureLeavesTheStateAlone) {
    for (const auto way : {PictureKeeper::Way::FramebufferObject, PictureKeeper::Way::Pixels}) {
        GlForm form;
        form.canvas->Context()->SetKeeping(way);
        TZKOglScene* scene = form.AddScene();
        form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        QObject::connect(scene, &TDisplayList::OnPlay, [] {
            glEnable(GL_SCISSOR_TEST);
            glScissor(0, 0, 1, 1);
            glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE);
            glDisable(GL_SCISSOR_TEST);
        });
        scene->Changed(nullptr);
        SwapDouble swap(form, Swap::Exchange);
        form.canvas->Refresh();
        EXPECT_EQ(swap.TakeSeen(), (std::vector{red, red}));
        GLboolean mask[4];
        glGetBooleanv(GL_COLOR_WRITEMASK, mask);
        EXPECT_FALSE(mask[1]);
        GLint readBuffer = 0;
        glGetIntegerv(GL_READ_BUFFER, &readBuffer);
        EXPECT_EQ(readBuffer, GL_BACK);
        GLint mode = 0;
        glGetIntegerv(GL_MATRIX_MODE, &mode);
        EXPECT_EQ(mode, GL_MODELVIEW);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    }
}

TEST(RepaintCount, BracketsCostOneRepaint) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.TakeSwaps();
    form.canvas->SetChanging(true);
    box->SetA(3);
    form.canvas->SetChanging(true);
    box->Setdrehwinkel(10);
    form.canvas->SetBlickWinkel(20);
    form.canvas->SetChanging(false);
    form.canvas->SetTranslation({1, 0, 0});
    form.canvas->Refresh();
    EXPECT_EQ(form.TakeSwaps(), 0);
    form.canvas->SetChanging(false);
    EXPECT_EQ(form.TakeSwaps(), 2);

    // each setter by itself is one repaint
    form.canvas->SetBlickWinkel(25);
    EXPECT_EQ(form.TakeSwaps(), 2);
    form.canvas->SetTranslation({0, 0, 0});
    EXPECT_EQ(form.TakeSwaps(), 2);
    form.canvas->Setdrehwinkel(5);
    EXPECT_EQ(form.TakeSwaps(), 2);
    form.canvas->SetZoomFactor(1.1);
    EXPECT_EQ(form.TakeSwaps(), 2);
    form.canvas->SetProjectionbase(Unitbase);
    EXPECT_EQ(form.TakeSwaps(), 2);
    box->SetVisible(false);
    EXPECT_EQ(form.TakeSwaps(), 2);
    box->getAttributes()->getMaterial()->SetDiffuse(0x123456);
    EXPECT_GE(form.TakeSwaps(), 2);
    form.control->resize(200, 120);
    GlForm::Settle();
    EXPECT_LE(form.TakeSwaps(), 6) << "a resize and its exposure";
}

TEST(RepaintCount, AnUnmatchedEndSilencesTheCanvasUntilItIsMatched) {
    GlForm form;
    form.TakeSwaps();
    form.canvas->SetChanging(false);
    form.canvas->Refresh();
    EXPECT_EQ(form.TakeSwaps(), 0);
    form.canvas->SetColor(0x123456);
    EXPECT_EQ(form.TakeSwaps(), 0);
    form.canvas->SetChanging(true);
    EXPECT_EQ(form.TakeSwaps(), 2) << "the count is 0 again, so this is an end, too";
    form.canvas->Refresh();
    EXPECT_EQ(form.TakeSwaps(), 2);
}

TEST(RepaintCount, NothingIsPaintedWhileHidden) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.window->hide();
    GlForm::Settle();
    form.TakeSwaps();
    box->Settranslation({2, -1, -1});
    EXPECT_EQ(form.TakeSwaps(), 0);
    form.window->show();
    GlForm::Settle();
    EXPECT_GE(form.TakeSwaps(), 2);
    EXPECT_EQ(form.PixelAt({240, 150}), red);
}

// What user code throws while it draws is told, and neither the repaint nor the next one suffers.
TEST(RepaintErrors, AnExceptionInAHandlerIsToldAndTheRestIsDrawn) {
    GlForm form;
    TZKOglScene* broken = form.AddScene();
    TZKOglScene* fine = form.AddScene();
    form.AddBox(fine, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    auto* shape = new TZKOglShape(form.window.get());
    shape->SetDisplayList(broken);
    const auto connection =
        QObject::connect(shape, &TZkShape::OnPlay, [] { throw std::runtime_error("no picture today"); });
    const Tmatrix before = form.canvas->GetOglModelMatrix();
    form.messages.Take();
    broken->Changed(nullptr);
    EXPECT_EQ(form.messages.Take(), QStringList{"no picture today"});
    EXPECT_FALSE(form.canvas->IsPainting());
    EXPECT_EQ(form.PixelAt({150, 150}), red);
    EXPECT_TRUE(Equals(form.canvas->GetOglModelMatrix(), before));
    EXPECT_EQ(PendingError(*form.canvas), 0U);
    QObject::disconnect(connection);
    form.canvas->Refresh();
    EXPECT_TRUE(broken->IsCompiled());
}
