#include <zk/host/stillalive.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

using namespace zk;

TEST(StillAlive, RunsAllStepsInTheirOrder) {
    const QObject one;
    const QObject other;
    std::string ran;
    const StillAlive alive({&one, &other});
    EXPECT_TRUE(alive);
    EXPECT_TRUE(alive.Run([&] { ran += 'a'; }, [&] { ran += 'b'; }, [&] { ran += 'c'; }));
    EXPECT_EQ(ran, "abc");
}

TEST(StillAlive, StopsWhenOneOfTheObjectsGoes) {
    for (int which = 0; which < 2; ++which) {
        std::unique_ptr<QObject> objects[]{std::make_unique<QObject>(), std::make_unique<QObject>()};
        std::string ran;
        const StillAlive alive({objects[0].get(), objects[1].get()});
        const auto remove = [&] {
            ran += 'a';
            objects[which].reset();
        };
        EXPECT_FALSE(alive.Run(
            remove, [&] { ran += 'b'; }, [&] { ran += 'c'; }));
        EXPECT_FALSE(alive);
        EXPECT_EQ(ran, "a");
    }
}

TEST(StillAlive, TellsOfAnObjectThatGoesInTheLastStep) {
    auto object = std::make_unique<QObject>();
    EXPECT_FALSE(StillAlive({object.get()}).Run([&] { object.reset(); }));
}

TEST(StillAlive, RunsNothingForOneThatWasNeverThere) {
    bool ran = false;
    EXPECT_FALSE(StillAlive({nullptr}).Run([&] { ran = true; }));
    EXPECT_FALSE(ran);
}

TEST(StillAlive, LetsAnExceptionThrough) {
    const QObject object;
    bool ran = false;
    EXPECT_THROW(StillAlive({&object}).Run([] { throw std::runtime_error("no"); }, [&] { ran = true; }),
                 std::runtime_error);
    EXPECT_FALSE(ran);
}
