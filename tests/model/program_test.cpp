// Programs at random: create, bind, rename, move, change, repaint and delete over all components, beside a model of
// what each refers to and is told of. On a real window and without OpenGL. ZKOGL_STRESS_STEPS in the environment makes
// more steps, ZKOGL_STRESS_SEED other ones; ZKOGL_MODEL_TRACE prints each step before it is made.
#include "world.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace zk::test;

namespace {

constexpr int stepsOfProgram = 400;

bool isLive() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// What went wrong when these steps of the program were made; empty when nothing did.
std::string run(std::uint32_t seed, const std::vector<int>& steps, std::string* program = nullptr) {
    World world({.live = isLive()});
    for (const int step : steps) {
        RandomChoices choices(seed, std::uint32_t(step));
        world.Step(choices);
        if (!world.Failure().empty())
            break;
    }
    if (world.Failure().empty())
        world.End();
    if (program)
        *program = world.Program();
    return world.Failure();
}

/// Steps that go wrong, with none among them that could be left out, as far as half a minute goes.
std::vector<int> shrunk(std::uint32_t seed, std::vector<int> steps) {
    QElapsedTimer passed;
    passed.start();
    for (std::size_t length = steps.size() / 2; length > 0; length /= 2) {
        for (std::size_t at = 0; at < steps.size() && passed.elapsed() < 30000;) {
            std::vector<int> fewer = steps;
            const auto from = fewer.begin() + std::ptrdiff_t(at);
            fewer.erase(from, from + std::ptrdiff_t(std::min(length, steps.size() - at)));
            if (run(seed, fewer).empty())
                at += length;
            else
                steps = std::move(fewer);
        }
    }
    return steps;
}

}  // namespace

TEST(Programs, NothingDiffersFromTheModel) {
    const int fewest = isLive() ? 4000 : 8000;
    const int wanted = std::max(fewest, qEnvironmentVariableIntValue("ZKOGL_STRESS_STEPS"));
    const auto first = std::uint32_t(std::max(1, qEnvironmentVariableIntValue("ZKOGL_STRESS_SEED")));
    if (!isLive())
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));  // of the platform without windows
    int made = 0;
    std::uint32_t seed = first;
    for (; made < wanted; ++seed, made += stepsOfProgram) {
        if (made % 100000 == 0 && made > 0)
            std::fprintf(stderr, "%d steps, next seed %u\n", made, seed);
        std::vector<int> steps(stepsOfProgram);
        std::iota(steps.begin(), steps.end(), 0);
        if (run(seed, steps).empty())
            continue;
        std::string program;
        const std::string failure = run(seed, shrunk(seed, steps), &program);
        FAIL() << "seed " << seed << ": " << failure << "\nafter these steps:\n" << program;
    }
    std::printf("%d steps of %u programs, %ld predictions of events, no difference\n", made, seed - first,
                World::Compared());
}
