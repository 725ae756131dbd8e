#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace zk::test {

/// Where a program's decisions come from.
class Choices {
  public:
    virtual ~Choices() = default;
    /// A number from 0 to `end` - 1; 0 where there is nothing to choose from.
    virtual int Below(int end) = 0;

    bool OneIn(int n) { return Below(n) == 0; }
    template <class List>
    auto& Of(List& list) {
        return list[std::size_t(Below(int(std::size(list))))];
    }
};

/// At random. Each step of a program has a generator of its own, so that a step does the same thing whichever of the
/// others are left out.
class RandomChoices : public Choices {
  public:
    RandomChoices(std::uint32_t seed, std::uint32_t step) {
        std::seed_seq sequence{seed, step};
        engine_.seed(sequence);
    }
    int Below(int end) override { return end < 1 ? 0 : int(engine_() % std::uint32_t(end)); }

  private:
    std::minstd_rand engine_;
};

/// As a fuzzer's input has them, two bytes at most for each; 0 when they are used up.
class ByteChoices : public Choices {
  public:
    explicit ByteChoices(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    bool IsUsedUp() const { return bytes_.empty(); }
    int Below(int end) override {
        if (end < 2)
            return 0;
        const unsigned high = end > 256 ? next() : 0;
        return int((high * 256 + next()) % unsigned(end));
    }

  private:
    unsigned next() {
        if (bytes_.empty())
            return 0;
        const unsigned byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    std::span<const std::uint8_t> bytes_;
};

}  // namespace zk::test
