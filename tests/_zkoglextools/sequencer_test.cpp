#include <zk/_zkoglextools/ogltimer.h>
#include <zk/_zkoglextools/sequencer.h>
#include <zk/_zkxyz/message.h>

#include <QMetaProperty>
#include <QTest>
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

using namespace zk;

namespace {

/// A timer that notes at which of its ticks it raises events; a tick that raises two is noted twice.
class Noted {
  public:
    Noted(int displacement, int intervals, bool enabled = true) {
        timer.SetDisplacement(displacement);
        timer.SetIntervals(intervals);
        timer.SetEnabled(enabled);
        QObject::connect(&timer, &TZkOglTimer::Ontimer, [this] { events.push_back(tick); });
    }
    void Tick(int times) {
        for (int i = 0; i < times; ++i) {
            ++tick;
            timer.Timer();
        }
    }

    TZkOglTimer timer;
    std::vector<int> events;
    int tick = 0;
};

std::vector<int> eventsOf(int displacement, int intervals, int ticks) {
    Noted noted(displacement, intervals);
    noted.Tick(ticks);
    return noted.events;
}

using Ticks = std::vector<int>;

/// What the events ought to be, from where they lie and not from counting.
Ticks expected(int d, int p, int ticks) {
    Ticks events;
    const auto add = [&](int tick) {
        if (tick <= ticks)
            events.push_back(tick);
    };
    if (p == 0) {
        // The first tick finds the count at 0. Then the delay is served, with an event of its own and one of the
        // period.
        if (d > 0)
            add(1);
        add(d + 1);
        add(d + 1);
        return events;
    }
    const int first = std::min(d, p) + 1;
    for (int tick = first; tick <= ticks; tick += p)
        add(tick);
    return events;
}

}  // namespace

TEST(OglTimer, StartsOffAndEmpty) {
    TZkOglTimer timer;
    EXPECT_EQ(timer.GetSequencer(), nullptr);
    EXPECT_EQ(timer.GetDisplacement(), 0);
    EXPECT_EQ(timer.GetIntervals(), 0);
    EXPECT_FALSE(timer.GetEnabled());
}

TEST(OglTimer, TheEventsComeAfterTheDelayAndThenEveryPeriod) {
    EXPECT_EQ(eventsOf(0, 3, 10), (Ticks{1, 4, 7, 10}));
    EXPECT_EQ(eventsOf(2, 3, 12), (Ticks{3, 6, 9, 12}));
    EXPECT_EQ(eventsOf(5, 2, 10), (Ticks{3, 5, 7, 9}));
    EXPECT_EQ(eventsOf(3, 3, 12), (Ticks{4, 7, 10}));
    EXPECT_EQ(eventsOf(0, 1, 4), (Ticks{1, 2, 3, 4}));
    EXPECT_EQ(eventsOf(0, 0, 10), (Ticks{1, 1}));
    EXPECT_EQ(eventsOf(4, 0, 10), (Ticks{1, 5, 5}));
}

TEST(OglTimer, TickTables) {
    for (int d = 0; d <= 12; ++d)
        for (int p = 0; p <= 12; ++p)
            EXPECT_EQ(eventsOf(d, p, 200), expected(d, p, 200)) << "D " << d << ", P " << p;
}

TEST(OglTimer, NegativeNumbersAreNeverReached) {
    EXPECT_EQ(eventsOf(-1, -1, 1000), Ticks{});
    EXPECT_EQ(eventsOf(-1, 4, 12), (Ticks{5, 9}));
    EXPECT_EQ(eventsOf(3, -1, 50), (Ticks{4}));
    EXPECT_EQ(eventsOf(INT_MAX, INT_MIN, 50), Ticks{});
}

TEST(OglTimer, WhileOffItCountsOn) {
    Noted noted(0, 3, false);
    noted.Tick(5);
    EXPECT_EQ(noted.events, Ticks{});
    noted.timer.SetEnabled(true);
    noted.Tick(10);
    EXPECT_EQ(noted.events, (Ticks{7, 10, 13}));
}

TEST(OglTimer, TheSenderIsTheTimer) {
    TZkOglTimer timer;
    timer.SetEnabled(true);
    QObject* seen = nullptr;
    QObject::connect(&timer, &TZkOglTimer::Ontimer, [&](QObject* sender) { seen = sender; });
    timer.Timer();
    EXPECT_EQ(seen, &timer);
}

TEST(OglTimer, AnErrorOfAHandlerIsToldAndTheCountGoesOn) {
    std::vector<std::string> messages;
    const MessageHandler before = SetMessageHandler([&](const std::string& text) { messages.push_back(text); });
    Noted noted(0, 2);
    QObject::connect(&noted.timer, &TZkOglTimer::Ontimer, [] { throw std::runtime_error("no"); });
    noted.Tick(6);
    SetMessageHandler(before);
    EXPECT_EQ(noted.events, (Ticks{1, 3, 5}));
    EXPECT_EQ(messages.size(), 3U);
}

TEST(OglTimer, AHandlerMayDeleteItAtEachKindOfEvent) {
    for (const int displacement : {2, 5}) {  // the event after the delay, and one of the period before it
        const QPointer<TZkOglTimer> timer = new TZkOglTimer;
        timer->SetEnabled(true);
        timer->SetDisplacement(displacement);
        timer->SetIntervals(3);
        QObject::connect(timer, &TZkOglTimer::Ontimer, [&timer] { delete timer; });
        int ticks = 0;
        for (; timer && ticks < 100; ++ticks)
            timer->Timer();
        EXPECT_EQ(ticks, displacement == 2 ? 3 : 4);
    }
}

TEST(Sequencer, WhatIsMadeIsNotTakenForWhatGoes) {
    TZkOglSequencer clock;
    TZkOglTimer timer;
    timer.SetSequencer(&clock);
    clock.Notification(&timer, TOperation::opInsert);
    EXPECT_EQ(clock.IndexOfTimer(&timer), 0);
    EXPECT_EQ(timer.GetSequencer(), &clock);
    timer.Notification(&clock, TOperation::opInsert);
    EXPECT_EQ(timer.GetSequencer(), &clock);
}

TEST(Sequencer, EachTimerIsRegisteredOnce) {
    TZkOglSequencer sequencer;
    TZkOglTimer a;
    TZkOglTimer b;
    EXPECT_EQ(sequencer.IndexOfTimer(&a), -1);
    EXPECT_EQ(sequencer.AddTimer(&a), 0);
    EXPECT_EQ(sequencer.AddTimer(&b), 1);
    EXPECT_EQ(sequencer.AddTimer(&a), 0);
    EXPECT_EQ(sequencer.AddTimer(nullptr), -1);
    EXPECT_EQ(sequencer.TimerCount(), 2);
    EXPECT_EQ(sequencer.Timerat(1), &b);
    EXPECT_EQ(sequencer.Timerat(2), nullptr);
    EXPECT_EQ(sequencer.Timerat(-1), nullptr);
    b.SetSequencer(&sequencer);
    EXPECT_EQ(sequencer.TimerCount(), 2);
    sequencer.removetimer(&a);
    sequencer.removetimer(&a);
    sequencer.removetimer(nullptr);
    EXPECT_EQ(sequencer.IndexOfTimer(&a), -1);
    EXPECT_EQ(sequencer.IndexOfTimer(&b), 0);
    EXPECT_EQ(b.GetSequencer(), &sequencer);
}

TEST(Sequencer, ATickIsItsOwnEventThenThoseOfTheTimersInOrder) {
    TZkOglSequencer sequencer;
    std::string order;
    QObject::connect(&sequencer, &TTimer::OnTimer, [&](QObject* sender) {
        EXPECT_EQ(sender, &sequencer);
        order += 's';
    });
    std::vector<std::unique_ptr<TZkOglTimer>> timers;
    for (const char letter : {'a', 'b', 'c'}) {
        timers.push_back(std::make_unique<TZkOglTimer>());
        timers.back()->SetEnabled(true);
        timers.back()->SetIntervals(letter == 'b' ? 2 : 1);
        timers.back()->SetSequencer(&sequencer);
        QObject::connect(timers.back().get(), &TZkOglTimer::Ontimer, [&order, letter] { order += letter; });
    }
    sequencer.Timer();
    sequencer.Timer();
    sequencer.Timer();
    EXPECT_EQ(order, "sabcsacsabc");
}

TEST(Sequencer, ATimerThatMovedIsTickedByBoth) {
    TZkOglSequencer first;
    TZkOglSequencer second;
    Noted noted(0, 1);
    noted.timer.SetSequencer(&first);
    noted.timer.SetSequencer(&second);
    EXPECT_EQ(noted.timer.GetSequencer(), &second);
    EXPECT_EQ(first.IndexOfTimer(&noted.timer), 0);
    first.Timer();
    second.Timer();
    EXPECT_EQ(noted.events.size(), 2U);
    noted.timer.SetSequencer(nullptr);
    EXPECT_EQ(noted.timer.GetSequencer(), nullptr);
    first.Timer();
    second.Timer();
    EXPECT_EQ(noted.events.size(), 4U);
    first.removetimer(&noted.timer);
    first.Timer();
    EXPECT_EQ(noted.events.size(), 4U);
}

TEST(Sequencer, WhatGoesIsForgotten) {
    auto first = std::make_unique<TZkOglSequencer>();
    auto second = std::make_unique<TZkOglSequencer>();
    auto timer = std::make_unique<TZkOglTimer>();
    timer->SetSequencer(first.get());
    timer->SetSequencer(second.get());
    first.reset();
    EXPECT_EQ(timer->GetSequencer(), second.get());
    timer->SetEnabled(true);
    timer->SetIntervals(4);
    timer.reset();
    EXPECT_EQ(second->TimerCount(), 0);
    second->Timer();
    timer = std::make_unique<TZkOglTimer>();
    timer->SetSequencer(second.get());
    second.reset();
    EXPECT_EQ(timer->GetSequencer(), nullptr);
    // of one owner, in both orders
    for (const bool sequencerFirst : {true, false}) {
        QObject form;
        auto* sequencer = new TZkOglSequencer(&form);
        auto* owned = new TZkOglTimer(&form);
        owned->SetSequencer(sequencer);
        if (sequencerFirst) {
            delete sequencer;
            EXPECT_EQ(owned->GetSequencer(), nullptr);
        } else {
            delete owned;
            EXPECT_EQ(sequencer->TimerCount(), 0);
        }
    }
}

namespace {

/// A sequencer with timers whose first one does something in its event.
struct Crowd {
    Crowd() : sequencer(std::make_unique<TZkOglSequencer>()) {
        for (int i = 0; i < 4; ++i) {
            timers.push_back(std::make_unique<TZkOglTimer>());
            timers.back()->SetEnabled(true);
            timers.back()->SetIntervals(1);
            timers.back()->SetSequencer(sequencer.get());
            QObject::connect(timers.back().get(), &TZkOglTimer::Ontimer, [this, i] {
                fired += std::to_string(i);
                if (i == 1 && act)
                    std::exchange(act, nullptr)();
            });
        }
    }
    std::unique_ptr<TZkOglSequencer> sequencer;
    std::vector<std::unique_ptr<TZkOglTimer>> timers;
    std::function<void()> act;
    std::string fired;
};

}  // namespace

TEST(Sequencer, AnythingMayGoInAnEvent) {
    {
        Crowd crowd;  // itself: the others keep in step
        crowd.act = [&] { crowd.timers[1].reset(); };
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "0123");
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "0123023");
    }
    {
        Crowd crowd;  // one before, one behind
        crowd.act = [&] {
            crowd.timers[0].reset();
            crowd.timers[2].reset();
        };
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "013");
    }
    {
        Crowd crowd;  // all
        crowd.act = [&] { crowd.timers.clear(); };
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "01");
    }
    {
        Crowd crowd;  // the sequencer
        crowd.act = [&] { crowd.sequencer.reset(); };
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "01");
        EXPECT_EQ(crowd.timers[3]->GetSequencer(), nullptr);
    }
    {
        Crowd crowd;  // the sequencer, from its own event
        QObject::connect(crowd.sequencer.get(), &TTimer::OnTimer, [&] { crowd.sequencer.reset(); });
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "");
    }
    {
        Crowd crowd;  // a timer that comes is ticked from the next tick on, one that leaves no more
        TZkOglTimer late;
        late.SetEnabled(true);
        QObject::connect(&late, &TZkOglTimer::Ontimer, [&] { crowd.fired += 'L'; });
        crowd.act = [&] {
            late.SetSequencer(crowd.sequencer.get());
            crowd.sequencer->removetimer(crowd.timers[3].get());
        };
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "012");
        crowd.sequencer->Timer();
        EXPECT_EQ(crowd.fired, "012012LL") << "a period of 0 raises two";
    }
}

// --- by the clock ---------------------------------------------------------------------------------------------------

namespace {

class SequencerClock : public testing::Test {
  protected:
    SequencerClock() {
        TTimer::DriveTime(true);
        sequencer.SetInterval(10);
    }
    ~SequencerClock() override { TTimer::DriveTime(false); }
    TZkOglSequencer sequencer;
};

}  // namespace

TEST_F(SequencerClock, TicksReachTheTimers) {
    Noted noted(1, 2);
    noted.timer.SetSequencer(&sequencer);
    QObject::connect(&sequencer, &TTimer::OnTimer, [&] { ++noted.tick; });
    TTimer::AdvanceTime(95);
    EXPECT_EQ(noted.events, (Ticks{2, 4, 6, 8}));
    sequencer.SetEnabled(false);
    TTimer::AdvanceTime(1000);
    EXPECT_EQ(noted.tick, 9);
}

TEST_F(SequencerClock, WithNobodyToTellTheClockSleeps) {
    EXPECT_FALSE(sequencer.IsRunning());
    TZkOglTimer timer;
    timer.SetSequencer(&sequencer);
    EXPECT_FALSE(sequencer.IsRunning()) << "the timer is off";
    timer.SetEnabled(true);
    EXPECT_TRUE(sequencer.IsRunning());
    timer.SetEnabled(false);
    EXPECT_FALSE(sequencer.IsRunning());
    const auto connection = QObject::connect(&sequencer, &TTimer::OnTimer, [] {});
    EXPECT_TRUE(sequencer.IsRunning());
    QObject::disconnect(connection);
    QCoreApplication::processEvents();
    EXPECT_FALSE(sequencer.IsRunning());
    timer.SetEnabled(true);
    sequencer.removetimer(&timer);
    EXPECT_FALSE(sequencer.IsRunning());
    sequencer.AddTimer(&timer);
    sequencer.SetEnabled(false);
    EXPECT_FALSE(sequencer.IsRunning());
}

// A sleep cannot be told from being awake: the same events at the same times, whatever is switched when.
TEST_F(SequencerClock, ASleepCountsWhatItMisses) {
    std::mt19937 random(7);
    const auto below = [&](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 200; ++round) {
        TZkOglSequencer sleepy;
        TZkOglSequencer awake;
        QObject::connect(&awake, &TTimer::OnTimer, [] {});
        std::vector<int> events[2];
        int time = 0;
        TZkOglTimer timers[2];
        const int d = below(8) - 1;
        const int p = below(8) - 1;
        for (int i = 0; i < 2; ++i) {
            TZkOglSequencer& clock = i == 0 ? sleepy : awake;
            clock.SetInterval(10);
            timers[i].SetDisplacement(d);
            timers[i].SetIntervals(p);
            timers[i].SetSequencer(&clock);
            QObject::connect(&timers[i], &TZkOglTimer::Ontimer, [&events, &time, i] { events[i].push_back(time); });
        }
        bool on = false;
        for (int step = 0; step < 20; ++step) {
            const int act = below(6);
            const int value = below(8);
            for (TZkOglTimer& timer : timers) {
                if (act < 2)
                    timer.SetEnabled(!on);
                else if (act == 2)
                    timer.SetIntervals(value);
                else if (act == 3)
                    timer.SetDisplacement(value);
            }
            on = act < 2 ? !on : on;
            EXPECT_EQ(sleepy.IsRunning(), on);
            const int passes = below(200);
            TTimer::AdvanceTime(passes);
            time += passes;
        }
        ASSERT_EQ(events[0], events[1]) << "round " << round;
    }
}

TEST_F(SequencerClock, HoursOfSleepCostNothing) {
    Noted noted(0, 7, false);
    noted.timer.SetSequencer(&sequencer);
    sequencer.SetInterval(1);
    TTimer::AdvanceTime(INT_MAX);
    noted.timer.SetEnabled(true);
    QObject::connect(&sequencer, &TTimer::OnTimer, [&] { ++noted.tick; });
    TTimer::AdvanceTime(20);
    // Events fall on every tick of the form 7 n + 1; as many have passed.
    const int offset = int((7 - (qint64(INT_MAX) - 1) % 7) % 7);
    const int first = offset == 0 ? 7 : offset;
    EXPECT_EQ(noted.events.front(), first);
    EXPECT_EQ(noted.events[1], first + 7);
}

TEST_F(SequencerClock, AHiddenWindowStopsIt) {
    QWidget window;
    auto* owned = new TZkOglSequencer(&window);
    TZkOglTimer timer(&window);
    timer.SetEnabled(true);
    timer.SetSequencer(owned);
    EXPECT_FALSE(owned->IsRunning());
    window.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(owned->IsRunning());
    window.hide();
    QCoreApplication::processEvents();
    EXPECT_FALSE(owned->IsRunning());
    timer.setParent(nullptr);
}

TEST(SequencerProperties, AreThoseOfTheClockAndTheTimer) {
    QObject form;
    auto* sequencer = new TZkOglSequencer(&form);
    auto* timer = new TZkOglTimer(&form);
    EXPECT_TRUE(sequencer->setProperty("Interval", 20));
    EXPECT_TRUE(sequencer->property("Enabled").toBool());
    EXPECT_TRUE(timer->setProperty("Sequencer", QVariant::fromValue(sequencer)));
    EXPECT_TRUE(timer->setProperty("Displacement", 3));
    EXPECT_TRUE(timer->setProperty("Intervals", 4));
    EXPECT_TRUE(timer->setProperty("Enabled", true));
    EXPECT_EQ(timer->GetSequencer(), sequencer);
    EXPECT_EQ(timer->GetDisplacement(), 3);
    EXPECT_EQ(timer->GetIntervals(), 4);
    EXPECT_TRUE(timer->GetEnabled());
    const QMetaObject* meta = timer->metaObject();
    std::vector<std::string> names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names.emplace_back(meta->property(i).name());
    EXPECT_EQ(names, (std::vector<std::string>{"Sequencer", "Displacement", "Intervals", "Enabled"}));
}
