#include <zk/_zkdevice/changebracket.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

using namespace zk;

namespace {

/// Counts its repaints, and does in them what a test wants.
class Painted : public TZKDevice {
  public:
    using TZKDevice::changeCount_;

    void BeginPaint() override {
        TZKDevice::BeginPaint();
        ++paints;
        if (inPaint)
            inPaint();
    }

    int paints = 0;
    std::function<void()> inPaint;
};

std::string messageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(ChangeBracket, TheOutermostOneRepaints) {
    Painted device;
    {
        const ChangeBracket outer(&device);
        {
            const ChangeBracket inner(&device);
            device.Refresh();
        }
        device.Refresh();
        EXPECT_EQ(device.paints, 0);
        EXPECT_EQ(device.changeCount_, 1);
    }
    EXPECT_EQ(device.paints, 1);
    EXPECT_EQ(device.changeCount_, 0);
}

TEST(ChangeBracket, DoesNothingWithoutADevice) {
    EXPECT_NO_THROW(const ChangeBracket bracket(nullptr));
}

TEST(ChangeBracket, ADeviceMayGoWithinIt) {
    auto device = std::make_unique<Painted>();
    const ChangeBracket bracket(device.get());
    device.reset();
}

// What user code throws in the repaint comes out of the scope; the count of open brackets is right all the same.
TEST(ChangeBracket, AnExceptionInTheRepaintGoesToTheCaller) {
    Painted device;
    device.inPaint = [] { throw std::runtime_error("paint"); };
    EXPECT_EQ(messageOf([&] { const ChangeBracket bracket(&device); }), "paint");
    EXPECT_EQ(device.changeCount_, 0);
    EXPECT_EQ(device.paints, 1);
    device.inPaint = {};
    device.Refresh();
    EXPECT_EQ(device.paints, 2);
}

TEST(ChangeBracket, TheFirstOfTwoExceptionsGoesOn) {
    Painted device;
    device.inPaint = [] { throw std::runtime_error("paint"); };
    EXPECT_EQ(messageOf([&] {
                  const ChangeBracket bracket(&device);
                  throw std::runtime_error("change");
              }),
              "change");
    EXPECT_EQ(device.changeCount_, 0);
    EXPECT_EQ(device.paints, 1);
}

// Also where the scope is within a handler that runs because of an exception.
TEST(ChangeBracket, AnExceptionGoesToTheCallerWhileAnotherOneIsHandled) {
    Painted device;
    device.inPaint = [] { throw std::runtime_error("paint"); };
    try {
        throw std::runtime_error("earlier");
    } catch (const std::exception&) {
        EXPECT_EQ(messageOf([&] { const ChangeBracket bracket(&device); }), "paint");
    }
}

TEST(InBracket, RunsItsStepsAndRepaintsOnce) {
    Painted device;
    std::string ran;
    EXPECT_TRUE(InBracket(
        device, [&] { ran += 'a'; },
        [&] {
            ran += 'b';
            EXPECT_EQ(device.changeCount_, 1);
        }));
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(device.paints, 1);
}

TEST(InBracket, StopsWhereTheDeviceGoes) {
    auto device = std::make_unique<Painted>();
    bool ran = false;
    EXPECT_FALSE(InBracket(
        *device, [&] { device.reset(); }, [&] { ran = true; }));
    EXPECT_FALSE(ran);
}

TEST(InBracket, StopsWhereSomethingElseThatIsNeededGoes) {
    Painted device;
    auto needed = std::make_unique<QObject>();
    bool ran = false;
    EXPECT_FALSE(InBracket(
        &device, {needed.get()}, [&] { needed.reset(); }, [&] { ran = true; }));
    EXPECT_FALSE(ran);
    EXPECT_EQ(device.changeCount_, 0);
    EXPECT_EQ(device.paints, 1);
}

// After a surplus close the opening repaints, and what the steps need may be gone before the first of them.
TEST(InBracket, RunsNothingIfWhatIsNeededGoesInTheOpening) {
    Painted device;
    auto needed = std::make_unique<QObject>();
    device.SetChanging(false);
    device.inPaint = [&] { needed.reset(); };
    bool ran = false;
    EXPECT_FALSE(InBracket(&device, {needed.get()}, [&] { ran = true; }));
    EXPECT_FALSE(ran);
    EXPECT_EQ(device.changeCount_, -1);
}

TEST(InBracket, EndsWhereAStepThrows) {
    Painted device;
    bool ran = false;
    EXPECT_EQ(messageOf([&] {
                  InBracket(
                      device, [] { throw std::runtime_error("step"); }, [&] { ran = true; });
              }),
              "step");
    EXPECT_FALSE(ran);
    EXPECT_EQ(device.changeCount_, 0);
    EXPECT_EQ(device.paints, 1);
}

TEST(InBracket, RunsItsStepsWithoutADevice) {
    const QObject needed;
    bool ran = false;
    EXPECT_TRUE(InBracket(nullptr, {&needed}, [&] { ran = true; }));
    EXPECT_TRUE(ran);
}
