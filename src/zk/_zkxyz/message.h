#pragma once

#include <zk/export.h>

#include <functional>
#include <string>

// How this layer speaks to the user. It knows no window system, so both ways go through handlers that the host layer,
// an application or a test replaces. Not for use from several threads at once.
namespace zk {

/// Shows text, modally where there is something to be modal on, and returns when it has been taken note of.
using MessageHandler = std::function<void(const std::string& text)>;

/// Sounds the system's default message beep.
using BeepHandler = std::function<void()>;

/// Installs handler and returns the one before it, which can be called and can be put back. An empty handler installs
/// the default: one line on standard error.
ZKXYZ_API MessageHandler SetMessageHandler(MessageHandler handler);

/// Shows text through the installed handler. What the handler throws comes through.
ZKXYZ_API void ShowMessage(const std::string& text);

/// Installs handler and returns the one before it. An empty handler installs the default: the bell character on
/// standard error.
ZKXYZ_API BeepHandler SetBeepHandler(BeepHandler handler);

/// Beeps through the installed handler.
ZKXYZ_API void MessageBeep();

}  // namespace zk
