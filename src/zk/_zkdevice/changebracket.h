#pragma once

#include <zk/_zkdevice/device.h>

#include <QPointer>

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
    /// Closes it.
    ~ChangeBracket() {
        if (device_)
            device_->SetChanging(false);
    }
    ChangeBracket(const ChangeBracket&) = delete;
    ChangeBracket& operator=(const ChangeBracket&) = delete;

  private:
    QPointer<TZKDevice> device_;
};

/// Runs `steps`, one after the other, within a bracket on `device`, and says whether the device still lives. After a
/// surplus close the opening repaints, and so may every step; user code in that repaint may delete the device, and what
/// is left is not run then.
template <class... Steps>
bool InBracket(TZKDevice& device, Steps&&... steps) {
    const QPointer<TZKDevice> alive = &device;
    device.SetChanging(true);
    static_cast<void>(((alive && (steps(), true)) && ...));
    if (alive)
        device.SetChanging(false);
    return !alive.isNull();
}

}  // namespace zk
