#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>

namespace zk {

/// A closed cylinder, frustum or cone that stands on the origin of its own frame along the z axis. A new one is a cone.
/// All setters take any value; sizes that make no solid (a negative radius, less than 2 slices or 1 stack) draw
/// nothing, or only the disks that can be drawn.
class ZKOGLTOOLS_API TZKOglCylinder : public TCustomShape {
    Q_OBJECT
    Q_PROPERTY(double BaseRadius READ GetBaseRadius WRITE SetBaseRadius)
    Q_PROPERTY(double TopRadius READ GetTopRadius WRITE SetTopRadius)
    Q_PROPERTY(double CylinderHeight READ GetCylinderHeight WRITE SetCylinderHeight)
    Q_PROPERTY(int Stacks READ GetStacks WRITE SetStacks)
    Q_PROPERTY(int Resolution READ GetResolution WRITE SetResolution)

  public:
    explicit TZKOglCylinder(QObject* owner = nullptr);
    ~TZKOglCylinder() override;

    double GetBaseRadius() const { return baseRadius_; }
    /// At z = 0, in centimetres; 3 at first.
    void SetBaseRadius(double radius);
    double GetTopRadius() const { return topRadius_; }
    /// At z = `CylinderHeight`, in centimetres; 0 at first.
    void SetTopRadius(double radius);
    double GetCylinderHeight() const { return height_; }
    /// In centimetres; 2 at first.
    void SetCylinderHeight(double height);
    int GetStacks() const { return stacks_; }
    /// Subdivisions along the axis; 5 at first, at most 1000 are drawn.
    void SetStacks(int stacks);
    int GetResolution() const { return resolution_; }
    /// Subdivisions around the axis; 10 at first, at most 239 are drawn.
    void SetResolution(int resolution);

    void Doplay() override;

  protected:
    bool DrawsOnlyItself() const override;

  private:
    int resolution_ = 10;
    double height_ = 2.0;
    double baseRadius_ = 3.0;
    double topRadius_ = 0.0;
    int stacks_ = 5;
};

}  // namespace zk
