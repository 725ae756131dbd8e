#pragma once

#include <zk/_zkcomtypes/polyattributes.h>
#include <zk/export.h>

#include <QPointer>

namespace zk {

class TZkOglCanvas;

/// The polygon style of a canvas. It hands nothing to OpenGL itself: scenes and shapes set the polygon mode when they
/// are played, and every face asks for the style as it is drawn.
class ZKOGLCANVAS_API TOglPolyAttributes : public TPolyAttributes {
    Q_OBJECT
  public:
    /// `canvas` is the one whose attributes these are; not owned, may be null.
    explicit TOglPolyAttributes(TZkOglCanvas* canvas = nullptr);

    /// The canvas whose attributes these are, or null.
    TZkOglCanvas* Canvas() const;

  private:
    QPointer<QObject> canvas_;
};

}  // namespace zk
