#pragma once

#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>
#include <zk/host/component.h>

namespace zk {

/// A frame that moves with a parameter: the base of components that user code animates along a curve.
///
/// A setter of the range or the parameter computes the frame at once; `Base` holds the result. A descendant says in
/// `CalculateBAse` what the frame is.
class ZKOGLTOOLS_API TBaseFun : public TComponent {
    Q_OBJECT
  public:
    explicit TBaseFun(QObject* owner = nullptr);
    ~TBaseFun() override;

    double GetMin() const { return min_; }
    /// The ends of the parameter's range, 0 and 1 at first. Ends that are equal give `Unitbase`.
    void SetMin(double min);
    /// The upper end of the range; see `SetMin`.
    double GetMax() const { return max_; }
    void SetMAx(double max);
    double GetParam() const { return param_; }
    /// The parameter, 0 at first; any value.
    void SetPAram(double param);
    bool GetCyclic() const { return cyclic_; }
    /// On (at first): a parameter outside the range is brought into it by whole ranges before it is used, so that a
    /// counter may run on for ever. The ends of the range stay as they are. Computes nothing.
    void SetCyclic(bool cyclic) { cyclic_ = cyclic; }

    /// The frame as it was computed last; `Unitbase` at first.
    const TBAse& Base() const { return base_; }

    /// The frame at `t`, where 0 to 1 is one run. `Unitbase` here.
    virtual TBAse CalculateBAse(double t);

    /// The frame for the present values: `CalculateBAse` of the parameter divided by the width of the range. The lower
    /// end is not subtracted, by choice: a range from 1 to 3 runs from t = 0.5 to 1.5.
    virtual TBAse GetBase();

    /// Stores what `GetBase` says.
    void ReCalc();

  private:
    double wrapped() const;

    double min_ = 0;
    double max_ = 1.0;
    double param_ = 0;
    bool cyclic_ = true;
    TBAse base_ = Unitbase;
};

}  // namespace zk
