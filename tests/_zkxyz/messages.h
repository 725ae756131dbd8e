#pragma once

#include <zk/_zkxyz/message.h>

#include <string>
#include <vector>

// Catches messages and beeps for the length of a test.
class Messages {
  public:
    Messages()
        : oldMessage_(zk::SetMessageHandler([this](const std::string& text) { texts.push_back(text); })),
          oldBeep_(zk::SetBeepHandler([this] { ++beeps; })) {}
    ~Messages() {
        zk::SetMessageHandler(oldMessage_);
        zk::SetBeepHandler(oldBeep_);
    }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    std::vector<std::string> texts;
    int beeps = 0;

  private:
    zk::MessageHandler oldMessage_;
    zk::BeepHandler oldBeep_;
};

using Texts = std::vector<std::string>;
inline const std::string Immodest = "bescheidenheit ist eine tugend";
inline const std::string ImmodestFree = "bescheidenheit ist eine tugend (freigeben)";
inline const std::string FreeFailed = "exception bei FreeMem von ArrayClear";
