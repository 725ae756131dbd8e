#include "message.h"

#include <cstdio>
#include <utility>

namespace zk {
namespace {

void PrintMessage(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

void PrintBell() {
    std::fputc('\a', stderr);
}

// Never destroyed: an array that is cleared while the program ends may still have something to say.
MessageHandler& CurrentMessageHandler() {
    static auto* handler = new MessageHandler(PrintMessage);
    return *handler;
}

BeepHandler& CurrentBeepHandler() {
    static auto* handler = new BeepHandler(PrintBell);
    return *handler;
}

}  // namespace

MessageHandler SetMessageHandler(MessageHandler handler) {
    return std::exchange(CurrentMessageHandler(), handler ? std::move(handler) : MessageHandler(PrintMessage));
}

void ShowMessage(const std::string& text) {
    // A copy, so that the handler may install another one while it runs.
    const MessageHandler handler = CurrentMessageHandler();
    handler(text);
}

BeepHandler SetBeepHandler(BeepHandler handler) {
    return std::exchange(CurrentBeepHandler(), handler ? std::move(handler) : BeepHandler(PrintBell));
}

void MessageBeep() {
    const BeepHandler handler = CurrentBeepHandler();
    handler();
}

}  // namespace zk
