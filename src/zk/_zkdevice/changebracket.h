#pragma once

#include <zk/_zkdevice/device.h>
#include <zk/host/stillalive.h>

#include <QPointer>

#include <cstddef>
#include <exception>
#include <utility>

namespace zk {

/// One repaint for all that changes within its scope: opens a bracket (`SetChanging`) on a device, and closes it at the
/// end of the scope if the device still lives. Brackets nest; the outermost one repaints. For a null device it does
/// nothing.
///
/// ```
/// const zk::ChangeBracket bracket(canvas);
/// for (auto* box : boxes)
///     box->SetA(2);
/// ```
class ChangeBracket {
  public:
    /// Opens a bracket on `device`, which may be null.
    explicit ChangeBracket(TZKDevice* device) : device_(device) {
        if (device_)
            device_->SetChanging(true);
    }
    /// Closes it. What user code throws in the repaint goes to the caller, as from `SetChanging`; where another
    /// exception has ended the scope, that one alone goes on.
    ~ChangeBracket() noexcept(false) {
        if (!device_)
            return;
        try {
            device_->SetChanging(false);
        } catch (...) {
            if (std::uncaught_exceptions() == exceptions_)
                throw;
        }
    }
    ChangeBracket(const ChangeBracket&) = delete;
    ChangeBracket& operator=(const ChangeBracket&) = delete;

  private:
    QPointer<TZKDevice> device_;
    int exceptions_ = std::uncaught_exceptions();
};

/// Runs `steps`, one after the other, within a bracket on `device`, which may be null, as long as all of `needed` live,
/// and says whether they still do. After a surplus close the opening repaints, and so may every step; user code in that
/// repaint may delete what the steps need. The bracket ends in any case, also where a step throws.
template <std::size_t N, class... Steps>
bool InBracket(TZKDevice* device, const QObject* const (&needed)[N], Steps&&... steps) {
    const StillAlive alive(needed);
    {
        const ChangeBracket bracket(device);
        alive.Run(std::forward<Steps>(steps)...);
    }
    return bool(alive);
}

/// Where nothing but the device itself is needed.
template <class... Steps>
bool InBracket(TZKDevice& device, Steps&&... steps) {
    return InBracket(&device, {&device}, std::forward<Steps>(steps)...);
}

}  // namespace zk
