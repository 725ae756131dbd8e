#pragma once

#include <zk/_zkxyz/message.h>
#include <zk/export.h>

#include <QString>

namespace zk {

/// Shows a message to the user through the handler in force (`SetMessageHandler`).
///
/// With a QApplication the handler at start is a message box, without one it is a line on standard error. The box opens
/// from the event loop, not inside the call: a message can come out of the middle of a paint or a destructor, where a
/// nested event loop would let the user delete what is being painted. While a text waits or stands in a box it is not
/// queued again, so that an error of every frame is one box.
ZKHOST_API void ShowMessage(const QString& text);

/// Makes the message box above the handler in force, and the desktop's beep that of `MessageBeep`. Done once by itself
/// when the application object is created; a test or an application that has set handlers of its own can come back to
/// these with it.
ZKHOST_API void InstallGuiMessageHandler();

}  // namespace zk
