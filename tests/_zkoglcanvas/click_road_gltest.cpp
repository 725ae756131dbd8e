#include "glform.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

// A byte goes to OpenGL as byte / 256 and comes back as a byte of 255.
const QColor shownRed(254, 0, 0);

}  // namespace

// From a real mouse press on the pixel of a box to the picture of the box in its new place.
TEST(ClickRoad, APressOnABoxMovesItWithOneRepaint) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    GlForm::Settle();

    // 30 pixels a centimetre: the box covers (120, 120) to (180, 180) of the client area
    ASSERT_EQ(form.PixelAt({150, 150}), shownRed);
    ASSERT_EQ(form.PixelAt({240, 150}), QColor(Qt::black));

    int presses = 0;
    QObject::connect(box, &TCustomShape::OnMouseDown,
                     [&](QObject* sender, Qt::MouseButton button, TShiftState shift, int x, int y) {
                         ++presses;
                         EXPECT_EQ(sender, box);
                         EXPECT_EQ(button, Qt::LeftButton);
                         EXPECT_EQ(shift, TShiftState(ssLeft));
                         EXPECT_EQ(x, 150);
                         EXPECT_EQ(y, 145);
                         ASSERT_EQ(form.canvas->Hits().size(), 1U);
                         EXPECT_EQ(form.canvas->Hits().front().HitObject, box->HitName());
                         EXPECT_EQ(form.TakeSwaps(), 0) << "a pick must not change the screen";
                         box->Set_translation("2/-1/-1");
                         EXPECT_EQ(form.TakeSwaps(), 2) << "one repaint, two swaps";
                     });
    form.TakeSwaps();
    form.Click({150, 145});
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(form.TakeSwaps(), 0);
    EXPECT_EQ(form.PixelAt({240, 150}), shownRed);
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(Qt::black));
}
