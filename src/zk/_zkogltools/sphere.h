#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>

namespace zk {

/// A sphere about the origin of its own frame, its poles on the z axis.
class ZKOGLTOOLS_API TZKOglSphere : public TCustomShape {
    Q_OBJECT
    Q_PROPERTY(double R READ GetR WRITE SetR)
    Q_PROPERTY(int Resolution READ GetResolution WRITE SetResolution)

  public:
    explicit TZKOglSphere(QObject* owner = nullptr);
    ~TZKOglSphere() override;

    double GetR() const { return r_; }
    /// The radius in centimetres, 1 at first. A sphere of radius 0, or of a negative one, draws nothing.
    void SetR(double radius);

    int GetResolution() const { return resolution_; }
    /// The number of slices around the axis and of stacks along it, 10 at first. Less than 1 is stored as 1, which
    /// draws nothing yet: a solid begins with 2; from 239 on it gets no finer.
    ///
    /// The scene is not marked: the new resolution shows when it is compiled for another reason (`Invalidate` does
    /// it), so that the resolution can follow the view without a compilation for each step.
    void SetResolution(int resolution);

    void Doplay() override;

  protected:
    bool DrawsOnlyItself() const override;

  private:
    double r_ = 1.0;
    int resolution_ = 10;
};

}  // namespace zk
