#include "shiftstate.h"

#include <QMouseEvent>

namespace zk {

TShiftState ShiftStateOf(const QMouseEvent& event) {
    TShiftState state;
    state.setFlag(ssShift, event.modifiers() & Qt::ShiftModifier);
    state.setFlag(ssAlt, event.modifiers() & Qt::AltModifier);
    state.setFlag(ssCtrl, event.modifiers() & Qt::ControlModifier);
    state.setFlag(ssLeft, event.buttons() & Qt::LeftButton);
    state.setFlag(ssRight, event.buttons() & Qt::RightButton);
    state.setFlag(ssMiddle, event.buttons() & Qt::MiddleButton);
    state.setFlag(ssDouble, event.type() == QEvent::MouseButtonDblClick);
    return state;
}

}  // namespace zk
