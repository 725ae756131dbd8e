// A program without a GUI, which has components all the same.
#include "formparts.h"

#include <zk/host/color.h>
#include <zk/host/message.h>
#include <zk/host/timer.h>

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zk::test {
namespace {

std::string printed(const std::function<void()>& act) {
    testing::internal::CaptureStderr();
    act();
    return testing::internal::GetCapturedStderr();
}

TEST(Console, MessagesAreLinesOnStandardError) {
    EXPECT_EQ(printed([] { ShowMessage(QStringLiteral("before\ntwo lines")); }), "before\ntwo lines\n");
    int count = 0;
    const QCoreApplication application(count, nullptr);
    EXPECT_EQ(printed([] {
                  ShowMessage(QStringLiteral("Ärger 100 %s"));
                  ShowMessage(QStringLiteral("Ärger 100 %s"));
                  QCoreApplication::processEvents();
              }),
              "Ärger 100 %s\nÄrger 100 %s\n");
    EXPECT_EQ(printed([] { MessageBeep(); }), "");
}

TEST(Console, FormsAndTimersWork) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    QObject form;
    Part a(&form, QStringLiteral("a"));
    Part b(&form, QStringLiteral("b"));
    a.setProperty("Next", QStringLiteral("b"));
    EXPECT_EQ(a.Next, &b);
    EXPECT_EQ(printed([&a] {
                  a.setProperty("Next", QStringLiteral("nobody"));
                  QCoreApplication::processEvents();
              }),
              "a.Next = \"nobody\": there is no component of that name\n");
    EXPECT_EQ(a.Next, &b);

    TTimer::DriveTime(true);
    TTimer timer(&form);
    int ticks = 0;
    QObject::connect(&timer, &TTimer::OnTimer, [&ticks] { ++ticks; });
    TTimer::AdvanceTime(3000);
    EXPECT_EQ(ticks, 3);
    TTimer::DriveTime(false);
    EXPECT_EQ(ColorToRGB(0x123456), 0x123456U);
    EXPECT_EQ(ColorToRGB(clWindow), 0U) << "there is no palette";
}

}  // namespace
}  // namespace zk::test
