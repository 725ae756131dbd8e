#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>

namespace zk {

/// A box from the origin of its own frame to (`Length`, `Width`, `Height`), in centimetres. An extent may be 0 (the
/// faces without area are not drawn) or negative (the box lies on the other side, inside out: its fronts face inwards).
class ZKOGLTOOLS_API TZKOglBox : public TCustomShape {
    Q_OBJECT
    Q_PROPERTY(double Length READ GetA WRITE SetA)
    Q_PROPERTY(double Width READ GetB WRITE SetB)
    Q_PROPERTY(double Height READ GetC WRITE SetC)

  public:
    explicit TZKOglBox(QObject* owner = nullptr);
    ~TZKOglBox() override;

    double GetA() const { return a_; }
    /// The extent along x; 1 at first, as the other two.
    void SetA(double length);
    double GetB() const { return b_; }
    /// The extent along y.
    void SetB(double width);
    double GetC() const { return c_; }
    /// The extent along z.
    void SetC(double height);

    void Doplay() override;

  protected:
    bool DrawsOnlyItself() const override;

  private:
    double a_ = 1.0;
    double b_ = 1.0;
    double c_ = 1.0;
};

}  // namespace zk
