#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>

#include <QStringList>

namespace zk {

/// Flat polygons, given as text:
///
/// ```
/// plane->SetData({"0/0/0", "2/0/0", "2/2/0",      // a triangle
///                 "",                             // any line that is no point ends a polygon
///                 "3/0/0", "4/0/0", "4/1/0", "3/1/0"});
/// ```
///
/// One point a line, in the text form of points (`Strtoxyz`), in centimetres of the shape's own frame. A line that is
/// not a point is a separator, whatever it says. Every polygon is drawn for itself as the shape's polygon style says;
/// one that lies within another is no hole in it (an outline that runs to the hole, around it and back is). Fronts
/// are seen clockwise. A polygon without area is not drawn.
class ZKOGLTOOLS_API TZKOglPlane : public TCustomShape {
    Q_OBJECT
    Q_PROPERTY(QStringList Data READ GetData WRITE writeData)

  public:
    explicit TZKOglPlane(QObject* owner = nullptr);
    ~TZKOglPlane() override;

    QStringList GetData() const { return data_; }
    /// Marks the scene for compilation, but does not repaint: `Invalidate` of the shape does. Long texts are often
    /// built up in several steps.
    void SetData(const QStringList& lines);

    void Doplay() override;

  protected:
    bool DrawsOnlyItself() const override;

  private:
    void writeData(const QStringList& lines);

    QStringList data_;
};

}  // namespace zk
