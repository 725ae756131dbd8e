#include "rounds.h"

#include <zk/_zkoglextools/way.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/message.h>

#include <QCoreApplication>
#include <QMetaProperty>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace zk;

namespace zk {

void PrintTo(const TXYZ& p, std::ostream* out) {
    *out << p.x << "/" << p.y << "/" << p.z;
}

}  // namespace zk

namespace {

const QStringList triangle{"0/0/0", "10/0/0", "10/10/0", "0/0/0"};
const QStringList open{"0/0/0", "10/0/0"};

/// Time is driven, and messages are kept.
class Way : public testing::Test {
  protected:
    Way() : before(SetMessageHandler([this](const std::string& text) { messages.push_back(text); })) {
        TTimer::DriveTime(true);
        QObject::connect(&way, &TZKOglWay::OnTimer, [this](QObject* sender) {
            EXPECT_EQ(sender, &way);
            ++ticks;
        });
    }
    ~Way() override {
        SetMessageHandler(before);
        TTimer::DriveTime(false);
        EXPECT_EQ(messages, std::vector<std::string>());
    }
    /// A run over the points in ticks of 500 ms, ready to go.
    void run(const QStringList& points, int howLong) {
        way.SetData(points);
        way.SetHowLong(howLong);
        way.SetActive(true);
    }

    TZKOglWay way;
    int ticks = 0;
    std::vector<std::string> messages;
    MessageHandler before;
};

}  // namespace

TEST_F(Way, StartsStoppedAndEmpty) {
    EXPECT_EQ(way.GetTimerDelay(), 500);
    EXPECT_EQ(way.GetHowLong(), 5000);
    EXPECT_EQ(way.GetData(), QStringList());
    EXPECT_FALSE(way.GetActive());
    EXPECT_EQ(way.GetCenter(), "0/0/0");
    EXPECT_EQ(way.Position(), 0);
    EXPECT_EQ(way.Step(), 0);
    EXPECT_EQ(way.COunt(), 0);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{0, 0, 0}));
    EXPECT_EQ(way.GetActualDirection(), (TXYZ{0, 0, 0}));
    TTimer::AdvanceTime(10000);
    EXPECT_EQ(ticks, 0);
}

TEST_F(Way, StretchesAreCounted) {
    way.SetData(triangle);
    EXPECT_EQ(way.COunt(), 3);
    way.SetData(open);
    EXPECT_EQ(way.COunt(), 2);
    way.SetData({"1/2/3"});
    EXPECT_EQ(way.COunt(), 0);
    way.SetData({"0/0/0", "5/0/0", "0/0/0.00000000001"});
    EXPECT_EQ(way.COunt(), 2) << "equal within the tolerance";
    way.SetData({"0/0/0", "5/0/0", " 0 / 0 / 0 "});
    EXPECT_EQ(way.COunt(), 2) << "the points count, not their texts";
}

TEST_F(Way, AClosedPathIsWalkedRoundAndRound) {
    run(triangle, 3000);  // 6 ticks, half a stretch each
    EXPECT_EQ(way.Step(), 0.5);
    const std::vector<TXYZ> expected{{5, 0, 0}, {10, 0, 0}, {10, 5, 0}, {10, 10, 0}, {5, 5, 0}, {0, 0, 0}};
    for (int round = 0; round < 3; ++round) {
        for (const TXYZ& point : expected) {
            TTimer::AdvanceTime(500);
            EXPECT_EQ(way.GetActualPosition(), point);
            EXPECT_LT(way.Position(), 3);
        }
        EXPECT_EQ(way.Position(), 0);
    }
    EXPECT_EQ(ticks, 18);
}

TEST_F(Way, TheLastStretchOfAnOpenPathIsTheZeroPoint) {
    run({"1/1/1", "3/1/1"}, 2000);
    EXPECT_EQ(way.Step(), 0.5);
    way.TimerDoTimer(nullptr);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{2, 1, 1}));
    way.TimerDoTimer(nullptr);
    EXPECT_EQ(way.Position(), 1.0);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{0, 0, 0}));
    way.TimerDoTimer(nullptr);
    EXPECT_EQ(way.Position(), 1.5);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{0, 0, 0}));
    way.TimerDoTimer(nullptr);
    EXPECT_EQ(way.Position(), 0);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{1, 1, 1}));
}

TEST_F(Way, APositionNextBelowAPointIsThatPoint) {
    // Ten steps of a tenth make a little less than one.
    way.SetData(triangle);
    way.SetTimerDelay(250);
    way.SetHowLong(7500);
    EXPECT_EQ(way.GetTimerDelay(), 250);
    EXPECT_DOUBLE_EQ(way.Step(), 0.1);
    way.SetActive(true);
    for (int i = 0; i < 10; ++i)
        way.TimerDoTimer(nullptr);
    EXPECT_LT(way.Position(), 1.0);
    EXPECT_NEAR(way.GetActualPosition().x, 10, 1e-12);
    EXPECT_NEAR(way.GetActualPosition().y, 0, 1e-12);
}

TEST_F(Way, TheDirectionLooksFromTheCentre) {
    run(triangle, 3000);
    way.SetCenter("5/5/0");
    TTimer::AdvanceTime(500);  // at 5/0/0
    EXPECT_EQ(way.GetActualDirection(), (TXYZ{0, -1, 0}));
    way.SetCenter("5/0/0");
    EXPECT_EQ(way.GetActualDirection(), (TXYZ{0, 0, 0}));
    way.SetCenter("no point");
    way.SetCenter("");
    way.SetCenter("1/2");
    EXPECT_EQ(way.GetCenter(), "5/0/0");
    way.SetCenter(" 5/0/ 7");
    EXPECT_EQ(way.GetCenter(), " 5/0/ 7");
    EXPECT_EQ(way.GetActualDirection(), (TXYZ{0, 0, -1}));
}

TEST_F(Way, OnlyTheTwoTimesComputeTheStep) {
    way.SetHowLong(1000);
    way.SetTimerDelay(100);
    way.SetData(triangle);
    EXPECT_EQ(way.Step(), 0) << "the points came after both";
    way.SetTimerDelay(100);
    EXPECT_EQ(way.Step(), 0) << "the same delay again changes nothing";
    way.SetHowLong(1000);
    EXPECT_DOUBLE_EQ(way.Step(), 0.3);
    way.SetData(open);
    EXPECT_DOUBLE_EQ(way.Step(), 0.3);
    way.SetTimerDelay(200);
    EXPECT_DOUBLE_EQ(way.Step(), 0.4);
    way.SetData({});
    way.SetTimerDelay(100);
    EXPECT_DOUBLE_EQ(way.Step(), 0.4);
}

TEST_F(Way, TheDelayIsTheNearestDivisorAndTheClockTicksAsWanted) {
    way.SetData(triangle);
    way.SetTimerDelay(480);
    EXPECT_EQ(way.GetTimerDelay(), 500);
    EXPECT_DOUBLE_EQ(way.Step(), 0.3);
    way.SetActive(true);
    TTimer::AdvanceTime(479);
    EXPECT_EQ(ticks, 0);
    TTimer::AdvanceTime(1);
    EXPECT_EQ(ticks, 1);
    way.SetTimerDelay(333);
    EXPECT_EQ(way.GetTimerDelay(), 250);
    TTimer::AdvanceTime(333 * 3);
    EXPECT_EQ(ticks, 4);
    way.SetTimerDelay(3000);  // none within 100
    EXPECT_EQ(way.GetTimerDelay(), 3000);
    EXPECT_DOUBLE_EQ(way.Step(), 1.8);
    way.SetHowLong(6);
    way.SetTimerDelay(4);  // 3 and 6: 3 is nearer
    EXPECT_EQ(way.GetTimerDelay(), 3);
    way.SetHowLong(15);
    way.SetTimerDelay(4);  // 3 and 5 are as near
    EXPECT_EQ(way.GetTimerDelay(), 5);
}

TEST_F(Way, TheDivisorSearchAgainstAPlainOne) {
    for (std::int64_t n = 1; n <= test::Rounds(2000); ++n) {
        std::vector<std::int64_t> divisors;
        for (std::int64_t k = 1; k <= n; ++k)
            if (k * (n / k) == n)
                divisors.push_back(k);
        for (std::int64_t d = 1; d <= 2000; ++d) {
            std::optional<std::int64_t> best;
            for (const std::int64_t k : divisors)
                if (std::abs(k - d) <= 100 && (!best || std::abs(k - d) <= std::abs(*best - d)))
                    best = k;
            const auto found = TZKOglWay::NearestDivisor(n, d);
            ASSERT_EQ(found.has_value(), best.has_value()) << n << ", " << d;
            if (best) {
                ASSERT_EQ(*found, *best) << n << ", " << d;
            }
        }
    }
}

TEST_F(Way, TheDivisorSearchBeyondTheUsual) {
    EXPECT_EQ(TZKOglWay::NearestDivisor(5000, 0), 1);
    EXPECT_EQ(TZKOglWay::NearestDivisor(5000, -7), -8);
    EXPECT_EQ(TZKOglWay::NearestDivisor(0, 123), 123);
    EXPECT_EQ(TZKOglWay::NearestDivisor(0, 0), 1);
    EXPECT_EQ(TZKOglWay::NearestDivisor(7, INT_MAX), std::nullopt);
    EXPECT_EQ(TZKOglWay::NearestDivisor(INT_MAX, INT_MAX), INT_MAX);
    EXPECT_EQ(TZKOglWay::NearestDivisor(-5000, 480), 500);
    EXPECT_EQ(TZKOglWay::NearestDivisor(5000, 5100), 5000) << "100 away is near enough";
    EXPECT_EQ(TZKOglWay::NearestDivisor(5000, 5101), std::nullopt);
}

TEST_F(Way, TimesThatWouldDivideByZeroLeaveAFiniteState) {
    run(triangle, 5000);
    way.SetHowLong(0);
    EXPECT_EQ(way.GetHowLong(), 0);
    EXPECT_EQ(way.Step(), 0);
    way.SetHowLong(2000);
    EXPECT_EQ(way.GetHowLong(), 0) << "once it is 0 it stays";
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 10);
    EXPECT_EQ(way.Position(), 0);
    way.SetActive(false);
    EXPECT_TRUE(way.GetActive());
    way.SetTimerDelay(700);
    EXPECT_EQ(way.GetTimerDelay(), 700);
    EXPECT_EQ(way.Step(), 0);
    EXPECT_TRUE(std::isfinite(way.GetActualPosition().x));

    TZKOglWay other;
    other.SetData(triangle);
    other.SetTimerDelay(0);  // the nearest divisor is 1, and the clock does not tick
    EXPECT_EQ(other.GetTimerDelay(), 1);
    other.SetActive(true);
    EXPECT_TRUE(other.GetActive());
    TTimer::AdvanceTime(1000);
    EXPECT_EQ(other.Position(), 0);

    TZKOglWay none;
    none.SetHowLong(7);
    none.SetTimerDelay(-200);  // -100 would be near enough, if it were a divisor
    EXPECT_EQ(none.GetTimerDelay(), -200);
    none.SetTimerDelay(100);
    EXPECT_EQ(none.GetTimerDelay(), -200) << "once it is below 1 it stays";
    none.SetHowLong(0);
    none.SetActive(true);
    EXPECT_FALSE(none.GetActive());

    TZKOglWay back;
    back.SetData(triangle);
    back.SetHowLong(-5000);
    EXPECT_EQ(back.GetHowLong(), -5000);
    back.SetHowLong(5000);
    EXPECT_EQ(back.GetHowLong(), -5000);
    back.SetActive(true);
    for (int i = 0; i < 20; ++i)
        back.TimerDoTimer(nullptr);
    EXPECT_NEAR(back.Position(), -6, 1e-9);
    EXPECT_EQ(back.GetActualPosition(), (TXYZ{0, 0, 0}));
}

TEST_F(Way, StoppingKeepsThePosition) {
    run(triangle, 3000);
    TTimer::AdvanceTime(1500);
    way.SetActive(false);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(way.GetActualPosition(), (TXYZ{10, 5, 0}));
    way.TimerDoTimer(nullptr);
    EXPECT_EQ(ticks, 4) << "a tick on demand is told";
    EXPECT_EQ(way.Position(), 1.5) << "but a stopped way does not go on";
    way.SetActive(true);
    TTimer::AdvanceTime(500);
    EXPECT_EQ(way.Position(), 2);
}

TEST_F(Way, WithoutPointsItDoesNotTick) {
    way.SetActive(true);
    EXPECT_TRUE(way.GetActive());
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 0);
    way.SetData(triangle);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 0) << "it had none when it was activated";
    way.SetActive(false);
    way.SetActive(true);
    TTimer::AdvanceTime(1000);
    EXPECT_EQ(ticks, 2);
    way.SetData({});
    TTimer::AdvanceTime(500);
    EXPECT_EQ(ticks, 3);
    way.SetActive(false);
    EXPECT_FALSE(way.GetActive());
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 13) << "the clock is switched only while there are points";
    way.SetActive(true);
    way.SetData(triangle);
    way.SetActive(false);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 13);
}

TEST_F(Way, MalformedPointsAreToldOnceAndStopIt) {
    run(triangle, 3000);
    way.SetData({"here", "10/0/0", "0/0/0"});
    EXPECT_THROW(way.COunt(), EConvertError);
    EXPECT_THROW(way.GetActualPosition(), EConvertError);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(messages.size(), 1U);
    EXPECT_FALSE(way.GetActive());
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(way.GetData().first(), "here") << "the text is not lost";
    EXPECT_THROW(way.SetHowLong(2000), EConvertError);
    EXPECT_DOUBLE_EQ(way.Step(), 0.5);
    messages.clear();
}

TEST_F(Way, MalformedPointsAreAnErrorOfTheTwoTimesThroughTheirPropertiesToo) {
    way.SetData({"0/0/0", "1/0/0", "there"});
    EXPECT_THROW(way.setProperty("TimerDelay", 200), EConvertError);
    EXPECT_EQ(way.GetTimerDelay(), 200) << "the number is taken";
    EXPECT_THROW(way.setProperty("HowLong", 3000), EConvertError);
    EXPECT_EQ(way.GetHowLong(), 3000);
    way.SetData(triangle);
    EXPECT_TRUE(way.setProperty("HowLong", 4000));
    EXPECT_DOUBLE_EQ(way.Step(), 3 * 200 / 4000.0);
}

TEST_F(Way, AnErrorOfAHandlerIsTold) {
    run(triangle, 3000);
    QObject::connect(&way, &TZKOglWay::OnTimer, [] { throw std::runtime_error("lost"); });
    TTimer::AdvanceTime(1000);
    EXPECT_EQ(messages, (std::vector<std::string>{"lost", "lost"}));
    EXPECT_EQ(way.Position(), 1.0);
    messages.clear();
}

TEST_F(Way, AHandlerMayDeleteIt) {
    auto gone = std::make_unique<TZKOglWay>();
    gone->SetData(triangle);
    gone->SetHowLong(3000);
    gone->SetActive(true);
    QObject::connect(gone.get(), &TZKOglWay::OnTimer, [&] { gone.reset(); });
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(gone, nullptr);
}

// Ten minutes at 25 ticks a second: every run ends at exactly 0, so that rounding never adds up.
TEST_F(Way, ItDoesNotDrift) {
    way.SetData({"0/0/0", "7/0/0", "7/3/0", "1/2/5", "0/1/0", "3/3/3", "0/0/0"});
    way.SetTimerDelay(40);
    way.SetHowLong(5000);
    EXPECT_EQ(way.GetTimerDelay(), 40);
    way.SetActive(true);
    std::vector<double> first;
    for (int tick = 0; tick < 15000; ++tick) {
        TTimer::AdvanceTime(40);
        if (tick < 125)
            first.push_back(way.Position());
        ASSERT_EQ(way.Position(), first[std::size_t(tick % 125)]) << tick;
    }
    EXPECT_EQ(first.back(), 0);
    EXPECT_EQ(ticks, 15000);
}

TEST_F(Way, ItStandsStillWithItsWindow) {
    QWidget window;
    auto* owned = new TZKOglWay(&window);
    owned->SetData(triangle);
    owned->SetHowLong(3000);
    owned->SetActive(true);
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(owned->Position(), 0);
    window.show();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(500);
    EXPECT_EQ(owned->Position(), 0.5);
    window.hide();
    QCoreApplication::processEvents();
    TTimer::AdvanceTime(500);
    EXPECT_EQ(owned->Position(), 0.5);
}

TEST_F(Way, ItStandsStillInAFormDesigner) {
    way.SetDesigning(true);
    run(triangle, 3000);
    EXPECT_TRUE(way.GetActive());
    TTimer::AdvanceTime(5000);
    EXPECT_EQ(ticks, 0);
}

TEST_F(Way, Properties) {
    std::vector<std::string> names;
    const QMetaObject* meta = way.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names.emplace_back(meta->property(i).name());
    EXPECT_EQ(names, (std::vector<std::string>{"TimerDelay", "Points", "Active", "HowLong", "Center"}));
    EXPECT_TRUE(way.setProperty("Points", triangle));
    EXPECT_TRUE(way.setProperty("HowLong", 3000));
    EXPECT_TRUE(way.setProperty("TimerDelay", 250));
    EXPECT_TRUE(way.setProperty("Center", "1/1/1"));
    EXPECT_TRUE(way.setProperty("Active", true));
    EXPECT_EQ(way.GetData(), triangle);
    EXPECT_EQ(way.Step(), 0.25);
    EXPECT_TRUE(way.GetActive());
}
