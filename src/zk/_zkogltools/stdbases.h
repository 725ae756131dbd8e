#pragma once

#include <zk/_zkogltools/basefun.h>
#include <zk/export.h>

#include <QString>

namespace zk {

/// A moving frame with a place in the world: turned about a line, then moved. Every setter of the place computes the
/// frame anew. A malformed text raises `EConvertError` and changes nothing.
class ZKOGLTOOLS_API TStdBases : public TBaseFun {
    Q_OBJECT
  public:
    explicit TStdBases(QObject* owner = nullptr);
    ~TStdBases() override;

    /// The move, as text "x/y/z".
    QString Get_translation() const;
    void Set_translation(const QString& text);
    /// The point and the direction of the line, as text; setting one keeps the other.
    QString GetDrehgeradePkt() const;
    void SetDrehgeradePkt(const QString& text);
    /// The direction of the line, as text; its point stays.
    QString GetDrehgeradeRichtung() const;
    void SetDrehgeradeRichtung(const QString& text);
    double Getdrehwinkel() const { return drehwinkel_; }
    /// The angle about the line. It goes through a conversion from radians to degrees before it is taken as radians:
    /// pass the wanted angle in radians times pi / 180. Scenes that were laid out with it count on that.
    void Setdrehwinkel(double angle);

    /// Rotation, then translation.
    Tmatrix TrfMAtrix() const;
    /// Where `TrfMAtrix` takes the unit frame.
    TBAse GetWorldBAse() const;

  private:
    TXYZ translation_{0, 0, 0};
    TGerade drehGerade_{{0, 0, 0}, {0, 0, 1}};
    double drehwinkel_ = 0;
};

}  // namespace zk
