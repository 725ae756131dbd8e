#pragma once

#include <zk/_zkogltools/stdbases.h>
#include <zk/export.h>

namespace zk {

/// A frame that travels an ellipse in the placed xy plane: once around, counter-clockwise seen from the placed z axis,
/// while `Param` runs from 0 to 1 in the initial range.
///
/// The origin lies on the ellipse. The first axis points against the direction of travel of a circle, whatever the
/// half axes are; the third is the placed z axis; all are of unit length and at right angles.
class ZKOGLTOOLS_API TEllipseWay : public TStdBases {
    Q_OBJECT
    Q_PROPERTY(double Param READ GetParam WRITE SetPAram)
    Q_PROPERTY(double Min READ GetMin WRITE SetMin)
    Q_PROPERTY(double Max READ GetMax WRITE SetMAx)
    Q_PROPERTY(bool Cyclic READ GetCyclic WRITE SetCyclic)
    Q_PROPERTY(double A READ GetA WRITE SetA)
    Q_PROPERTY(double B READ GetB WRITE SetB)
    Q_PROPERTY(double DrehWinkel READ Getdrehwinkel WRITE Setdrehwinkel)
    Q_PROPERTY(QString Drehgerade_Richtung READ GetDrehgeradeRichtung WRITE SetDrehgeradeRichtung)
    Q_PROPERTY(QString _Translation READ Get_translation WRITE Set_translation)

  public:
    explicit TEllipseWay(QObject* owner = nullptr);
    ~TEllipseWay() override;

    double GetA() const { return a_; }
    /// The half axes along x and y in centimetres, 1 at first. A new one shows at the next computation (`ReCalc`, or
    /// any setter of the range, the parameter or the place).
    void SetA(double a) { a_ = a; }
    /// The half axis along y in centimetres; see `SetA`.
    double GetB() const { return b_; }
    void SetB(double b) { b_ = b; }

    TBAse CalculateBAse(double t) override;

  private:
    double a_ = 1.0;
    double b_ = 1.0;
};

}  // namespace zk
