#include "messages.h"

#include <zk/_zkxyz/message.h>

#include <gtest/gtest.h>

namespace {

using namespace zk;

TEST(Message, GoesToTheInstalledHandler) {
    Messages messages;
    ShowMessage("eins");
    ShowMessage("");
    MessageBeep();
    EXPECT_EQ(messages.texts, (Texts{"eins", ""}));
    EXPECT_EQ(messages.beeps, 1);
}

TEST(Message, SettingReturnsTheHandlerBefore) {
    Messages messages;
    int inner = 0;
    const MessageHandler outer = SetMessageHandler([&](const std::string&) { ++inner; });
    ShowMessage("a");
    EXPECT_EQ(inner, 1);
    EXPECT_TRUE(messages.texts.empty());
    outer("b");
    EXPECT_EQ(messages.texts, (Texts{"b"}));
    SetMessageHandler(outer);
    ShowMessage("c");
    EXPECT_EQ(messages.texts, (Texts{"b", "c"}));
    EXPECT_EQ(inner, 1);
}

TEST(Message, TheDefaultPrintsOneLineOnStandardError) {
    Messages messages;
    SetMessageHandler({});
    SetBeepHandler({});
    testing::internal::CaptureStderr();
    ShowMessage("bescheidenheit ist eine tugend");
    MessageBeep();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "bescheidenheit ist eine tugend\n\a");
    EXPECT_TRUE(messages.texts.empty());
    EXPECT_EQ(messages.beeps, 0);
}

TEST(Message, AHandlerMayInstallAnother) {
    Messages messages;
    SetMessageHandler([](const std::string&) { SetMessageHandler({}); });
    ShowMessage("a");
    testing::internal::CaptureStderr();
    ShowMessage("b");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "b\n");
}

TEST(Message, WhatAHandlerThrowsComesThrough) {
    Messages messages;
    SetMessageHandler([](const std::string& text) { throw std::runtime_error(text); });
    EXPECT_THROW(ShowMessage("a"), std::runtime_error);
}

}  // namespace
