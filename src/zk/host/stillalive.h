#pragma once

#include <QObject>
#include <QPointer>

#include <algorithm>
#include <array>
#include <cstddef>

namespace zk {

/// Objects that something in several steps needs, where each step may call user code and that may delete them. Made
/// before the first step; a null pointer counts as an object that has gone.
///
/// ```
/// zk::StillAlive({plane, scene}).Run([&] { plane->SetDisplayList(nullptr); }, [&] { plane->SetDisplayList(scene); });
/// ```
template <std::size_t N>
class StillAlive {
  public:
    /// Watches `objects`.
    explicit StillAlive(const QObject* const (&objects)[N]) { std::copy_n(&objects[0], N, watched_.begin()); }
    /// Whether all of them live.
    explicit operator bool() const {
        return std::none_of(watched_.begin(), watched_.end(), [](const auto& object) { return object.isNull(); });
    }
    /// Runs `steps`, one after the other, as long as all of the objects live, and says whether they still do. An
    /// exception from a step leaves the rest undone and goes to the caller.
    template <class... Steps>
    bool Run(Steps&&... steps) const {
        static_cast<void>(((*this && (steps(), true)) && ...));
        return bool(*this);
    }

  private:
    std::array<QPointer<const QObject>, N> watched_;
};

}  // namespace zk
