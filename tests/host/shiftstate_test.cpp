#include <zk/host/shiftstate.h>

#include <QMouseEvent>
#include <QVariant>
#include <gtest/gtest.h>

using namespace zk;

namespace {

TShiftState of(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    return ShiftStateOf(QMouseEvent(type, QPointF(1, 2), QPointF(1, 2), button, buttons, modifiers));
}

}  // namespace

TEST(ShiftState, NothingHeldIsEmpty) {
    EXPECT_EQ(TShiftState(), of(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, Qt::NoModifier));
}

TEST(ShiftState, EachKeyAndButtonHasItsFlag) {
    const auto moved = [](Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
        return of(QEvent::MouseMove, Qt::NoButton, buttons, modifiers);
    };
    EXPECT_EQ(TShiftState(ssShift), moved(Qt::NoButton, Qt::ShiftModifier));
    EXPECT_EQ(TShiftState(ssAlt), moved(Qt::NoButton, Qt::AltModifier));
    EXPECT_EQ(TShiftState(ssCtrl), moved(Qt::NoButton, Qt::ControlModifier));
    EXPECT_EQ(TShiftState(ssLeft), moved(Qt::LeftButton, Qt::NoModifier));
    EXPECT_EQ(TShiftState(ssRight), moved(Qt::RightButton, Qt::NoModifier));
    EXPECT_EQ(TShiftState(ssMiddle), moved(Qt::MiddleButton, Qt::NoModifier));
    EXPECT_EQ(ssShift | ssCtrl | ssLeft | ssRight,
              moved(Qt::LeftButton | Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier));
}

TEST(ShiftState, OthersAreNotSeen) {
    EXPECT_EQ(TShiftState(),
              of(QEvent::MouseMove, Qt::NoButton, Qt::BackButton, Qt::MetaModifier | Qt::KeypadModifier));
}

TEST(ShiftState, ThePressedButtonIsHeldTheReleasedOneIsNot) {
    EXPECT_EQ(TShiftState(ssLeft), of(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    EXPECT_EQ(TShiftState(), of(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
}

TEST(ShiftState, ADoubleClickIsMarked) {
    EXPECT_EQ(ssLeft | ssDouble, of(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
}

TEST(ShiftState, AVariantHoldsIt) {
    const QVariant state = QVariant::fromValue(ssShift | ssLeft);
    EXPECT_EQ(ssShift | ssLeft, state.value<TShiftState>());
}
