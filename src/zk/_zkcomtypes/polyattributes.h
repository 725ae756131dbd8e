#pragma once

#include <zk/_zkcomtypes/enums.h>
#include <zk/_zkcomtypes/graphicsobject.h>
#include <zk/export.h>

namespace zk {

/// How polygons are rasterised and what a run of points is drawn as. A new one has `glfill` and `glpolygon`.
class ZKCOMTYPES_API TPolyAttributes : public TZkgraphicsobject {
    Q_OBJECT
    Q_PROPERTY(zk::TPAMode Mode READ GetMode WRITE SetMode)
  public:
    explicit TPolyAttributes(QObject* parent = nullptr);

    virtual TPAMode GetMode() const;
    /// What a run of points is drawn as.
    virtual TPAStyle GetStyle() const;
    /// Both setters store and notify, without comparing or checking.
    virtual void SetMode(TPAMode Value);
    virtual void SetStyle(TPAStyle Value);

    /// OpenGL's number of the mode: `glvalue::Point` plus the ordinal.
    std::uint32_t GLMode() const;
    /// OpenGL's number of the primitive: the ordinal.
    std::uint32_t GLStyle() const;

  protected:
    TPAMode mode_ = glfill;
    TPAStyle style_ = glpolygon;
};

}  // namespace zk
