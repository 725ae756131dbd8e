#pragma once

#include <zk/export.h>

#include <QFlags>
#include <QMetaType>

class QMouseEvent;

namespace zk {

/// Keys and mouse buttons that are held during an event.
enum TShiftStateFlag {
    ssShift = 1,
    ssAlt = 2,
    ssCtrl = 4,
    ssLeft = 8,
    ssRight = 16,
    ssMiddle = 32,
    ssDouble = 64,  ///< the press is the second of a double click
};
/// Any of them.
Q_DECLARE_FLAGS(TShiftState, TShiftStateFlag)

/// The state that goes with a mouse event. For a press the pressed button is among those held, for a release it no
/// longer is.
ZKHOST_API TShiftState ShiftStateOf(const QMouseEvent& event);

}  // namespace zk

Q_DECLARE_OPERATORS_FOR_FLAGS(zk::TShiftState)
Q_DECLARE_METATYPE(zk::TShiftState)
