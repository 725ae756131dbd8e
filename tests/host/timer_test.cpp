#include <zk/_zkxyz/message.h>
#include <zk/host/timer.h>

#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace zk;

namespace {

/// Time is driven while a test runs.
class TimerTest : public testing::Test {
  protected:
    TimerTest() { TTimer::DriveTime(true); }
    ~TimerTest() override { TTimer::DriveTime(false); }

    /// Notes the ticks of a timer under a letter.
    void follow(TTimer& timer, char letter) {
        QObject::connect(&timer, &TTimer::OnTimer, [this, letter] { ticks += letter; });
    }
    std::string take() { return std::exchange(ticks, {}); }

    std::string ticks;
};

/// Sleeps until it is woken, and counts.
class Sleeper : public TTimer {
  public:
    using TTimer::TTimer;
    ~Sleeper() override { AnnounceRemoval(); }
    void Wake(bool awake) {
        awake_ = awake;
        Reconsider();
    }
    void Timer() override {
        ++Ticks;
        TTimer::Timer();
    }
    int Ticks = 0;
    qint64 Slept = 0;

  protected:
    bool NeedsTicks() const override { return awake_; }
    void Missed(qint64 ticks) override {
        TTimer::Missed(ticks);
        Slept += ticks;
    }

  private:
    bool awake_ = false;
};

/// Fails at every tick.
class FailingTimer : public TTimer {
  public:
    using TTimer::TTimer;
    ~FailingTimer() override { AnnounceRemoval(); }
    void Timer() override { throw std::runtime_error("no tick today"); }
};

}  // namespace

TEST_F(TimerTest, IsOnWithASecond) {
    TTimer timer;
    EXPECT_TRUE(timer.GetEnabled());
    EXPECT_EQ(timer.GetInterval(), 1000);
    EXPECT_TRUE(timer.IsRunning());
    follow(timer, 'a');
    TTimer::AdvanceTime(999);
    EXPECT_EQ(take(), "");
    TTimer::AdvanceTime(1);
    EXPECT_EQ(take(), "a");
    TTimer::AdvanceTime(3500);
    EXPECT_EQ(take(), "aaa");
    TTimer::AdvanceTime(500);
    EXPECT_EQ(take(), "a");
}

TEST_F(TimerTest, TicksOnDemandWhetherOnOrOff) {
    TTimer timer;
    follow(timer, 'a');
    timer.Timer();
    timer.SetEnabled(false);
    timer.Timer();
    EXPECT_EQ(take(), "aa");
    EXPECT_FALSE(timer.IsRunning());
    TTimer::AdvanceTime(10000);
    EXPECT_EQ(take(), "");
}

TEST_F(TimerTest, SwitchingOnAndEveryIntervalBeginAnew) {
    TTimer timer;
    follow(timer, 'a');
    TTimer::AdvanceTime(900);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    TTimer::AdvanceTime(900);
    EXPECT_EQ(take(), "");
    timer.SetInterval(10);
    TTimer::AdvanceTime(35);
    EXPECT_EQ(take(), "aaa");
    timer.SetInterval(10);
    TTimer::AdvanceTime(9);
    EXPECT_EQ(take(), "");
    TTimer::AdvanceTime(1);
    EXPECT_EQ(take(), "a");
    for (const int none : {0, -5}) {
        timer.SetInterval(none);
        EXPECT_EQ(timer.GetInterval(), none);
        EXPECT_FALSE(timer.IsRunning());
        TTimer::AdvanceTime(100000);
        EXPECT_EQ(take(), "");
    }
    timer.SetInterval(1);
    TTimer::AdvanceTime(4);
    EXPECT_EQ(take(), "aaaa");
}

TEST_F(TimerTest, DrivenTicksComeInTheirOrder) {
    TTimer slow;
    TTimer fast;
    TTimer same;
    slow.SetInterval(30);
    fast.SetInterval(10);
    same.SetInterval(30);
    follow(slow, 's');
    follow(fast, 'f');
    follow(same, 'm');
    TTimer::AdvanceTime(60);
    EXPECT_EQ(take(), "ffsfmffsfm") << "of those at the same time the one made first";
    TTimer::AdvanceTime(0);
    TTimer::AdvanceTime(-100);
    EXPECT_EQ(take(), "");
}

TEST_F(TimerTest, TimeDoesNotPassWithinItself) {
    TTimer timer;
    timer.SetInterval(10);
    follow(timer, 'a');
    QObject::connect(&timer, &TTimer::OnTimer, [] { TTimer::AdvanceTime(1000); });
    TTimer::AdvanceTime(20);
    EXPECT_EQ(take(), "aa");
}

TEST_F(TimerTest, HandlersMayDeleteAndChangeTimers) {
    auto first = std::make_unique<TTimer>();
    auto second = std::make_unique<TTimer>();
    first->SetInterval(10);
    second->SetInterval(10);
    follow(*first, '1');
    follow(*second, '2');
    QObject::connect(first.get(), &TTimer::OnTimer, [&] {
        second.reset();
        first->SetInterval(50);
    });
    TTimer::AdvanceTime(100);
    EXPECT_EQ(take(), "11");
    QObject::connect(first.get(), &TTimer::OnTimer, [&] { first.reset(); });
    TTimer::AdvanceTime(100);
    EXPECT_EQ(take(), "1");
    EXPECT_EQ(first, nullptr);
}

TEST_F(TimerTest, AnErrorOfAHandlerIsTold) {
    std::vector<std::string> messages;
    const MessageHandler before = SetMessageHandler([&](const std::string& text) { messages.push_back(text); });
    TTimer timer;
    QObject::connect(&timer, &TTimer::OnTimer, [] { throw std::runtime_error("out of time"); });
    follow(timer, 'a');
    timer.Timer();
    TTimer::AdvanceTime(2000);
    SetMessageHandler(before);
    EXPECT_EQ(messages, (std::vector<std::string>{"out of time", "out of time", "out of time"}));
}

TEST_F(TimerTest, AnErrorOfAnOverrideIsToldToo) {
    std::vector<std::string> messages;
    const MessageHandler before = SetMessageHandler([&](const std::string& text) { messages.push_back(text); });
    FailingTimer timer;
    timer.SetInterval(10);
    TTimer::AdvanceTime(30);
    SetMessageHandler(before);
    EXPECT_EQ(messages, std::vector<std::string>(3, "no tick today"));
    EXPECT_TRUE(timer.IsRunning()) << "the clock goes on";
}

TEST_F(TimerTest, WhatItSleepsThroughIsCounted) {
    Sleeper timer;
    timer.SetInterval(10);
    EXPECT_FALSE(timer.IsRunning());
    TTimer::AdvanceTime(35);
    EXPECT_EQ(timer.Slept, 0) << "told when it wakes";
    timer.Wake(true);
    EXPECT_TRUE(timer.IsRunning());
    EXPECT_EQ(timer.Slept, 3);
    TTimer::AdvanceTime(4);
    EXPECT_EQ(timer.Ticks, 0);
    TTimer::AdvanceTime(1);
    EXPECT_EQ(timer.Ticks, 1) << "at the same times as if it had not slept";
    timer.Wake(false);
    TTimer::AdvanceTime(10);
    TTimer::DriveTime(true);  // it is: no new interval begins
    TTimer::AdvanceTime(9);
    timer.Wake(true);
    TTimer::AdvanceTime(1);
    EXPECT_EQ(timer.Slept, 4);
    EXPECT_EQ(timer.Ticks, 2);
}

TEST_F(TimerTest, StandsStillWhileItsWindowCannotBeSeen) {
    QWidget window;
    auto* page = new QWidget(&window);
    auto* way = new TComponent(page);
    TTimer timer(way);
    timer.SetInterval(10);
    follow(timer, 'a');
    EXPECT_FALSE(timer.IsRunning());
    TTimer::AdvanceTime(100);
    EXPECT_EQ(take(), "");
    window.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(timer.IsRunning());
    TTimer::AdvanceTime(25);
    EXPECT_EQ(take(), "aa");
    window.hide();
    QCoreApplication::processEvents();
    EXPECT_FALSE(timer.IsRunning());
    TTimer::AdvanceTime(100);
    window.show();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(9);
    EXPECT_EQ(take(), "") << "a new interval begins";
    TTimer::AdvanceTime(1);
    EXPECT_EQ(take(), "a");
    page->hide();  // the window is what counts
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(10);
    EXPECT_EQ(take(), "a");
    window.showMinimized();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(100);
    EXPECT_EQ(take(), "");
    window.showNormal();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(10);
    EXPECT_EQ(take(), "a");
    // into another window, which is not shown
    QWidget other;
    page->setParent(&other);
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(10);
    EXPECT_EQ(take(), "");
    other.show();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(10);
    EXPECT_EQ(take(), "a");
    timer.setParent(nullptr);
}

TEST_F(TimerTest, AWindowThatItComesIntoIsNoticedAtTheNextTick) {
    QWidget window;
    TTimer timer;
    timer.SetInterval(10);
    follow(timer, 'a');
    timer.setParent(&window);  // Qt tells a child nothing of it
    EXPECT_TRUE(timer.IsRunning());
    TTimer::AdvanceTime(100);
    EXPECT_EQ(take(), "");
    EXPECT_FALSE(timer.IsRunning());
    window.show();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(10);
    EXPECT_EQ(take(), "a");
    timer.setParent(nullptr);
}

TEST_F(TimerTest, StandsStillInAFormDesigner) {
    TTimer timer;
    follow(timer, 'a');
    timer.SetDesigning(true);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(take(), "");
}

TEST_F(TimerTest, IsAComponentWithProperties) {
    QObject form;
    auto* timer = new TTimer(&form);
    EXPECT_EQ(timer->Owner(), &form);
    EXPECT_TRUE(timer->setProperty("Interval", 20));
    EXPECT_TRUE(timer->setProperty("Enabled", false));
    EXPECT_EQ(timer->GetInterval(), 20);
    EXPECT_FALSE(timer->property("Enabled").toBool());
}

// By the clock: how fast is not tested, only that it runs, and that it does not where it should not.
TEST(TimerClock, RunsByTheClock) {
    EXPECT_FALSE(TTimer::IsTimeDriven());
    TTimer timer;
    timer.SetInterval(1);
    int ticks = 0;
    QObject::connect(&timer, &TTimer::OnTimer, [&] { ++ticks; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 5; }));
    TTimer::AdvanceTime(1000);
    TTimer::DriveTime(true);
    EXPECT_TRUE(TTimer::IsTimeDriven());
    ticks = 0;
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0) << "driven time does not pass by itself";
    TTimer::AdvanceTime(3);
    EXPECT_EQ(ticks, 3);
    TTimer::DriveTime(false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 5; }));
    timer.SetEnabled(false);
    ticks = 0;
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0);
    QWidget hidden;
    TTimer unseen(&hidden);
    unseen.SetInterval(1);
    QObject::connect(&unseen, &TTimer::OnTimer, [&] { ++ticks; });
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0);
    hidden.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 3; }));
    unseen.setParent(nullptr);
}

TEST(TimerClock, AfterASleepTheIntervalIsWhole) {
    Sleeper timer;
    timer.SetInterval(400);
    QTest::qWait(300);
    timer.Wake(true);  // the first tick comes about 100 ms later
    EXPECT_TRUE(QTest::qWaitFor([&] { return timer.Ticks >= 1; }));
    QElapsedTimer since;
    since.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return timer.Ticks >= 2; }));
    EXPECT_GE(since.elapsed(), 300);
}

// The last interval ends between two looks at the clock every now and then.
TEST(TimerClock, ASleepingTimerMayBeStoppedByItsIntervalAtAnyTime) {
    Sleeper timer;
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < 200) {
        timer.SetInterval(1000);
        timer.SetInterval(0);
        timer.SetInterval(1000);
        timer.SetInterval(-1);
    }
    EXPECT_EQ(timer.Slept, 0);
    EXPECT_FALSE(timer.IsRunning());
}
