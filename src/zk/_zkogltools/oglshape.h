#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>

namespace zk {

/// A shape that user code draws, in `OnPlay`, with OpenGL or with the drawing operations of its canvas.
///
/// `OnPlay` is told **twice** each time the shape is played, both times in the shape's place and scale: once as the
/// shape's geometry and once as the event that every shape has. Drawing an opaque thing twice shows it once; count on
/// it where that matters, with translucent materials for instance.
///
/// The shape is played when its scene is compiled, and in every pick (`TZkOglCanvas::IsSelecting`).
class ZKOGLTOOLS_API TZKOglShape : public TCustomShape {
    Q_OBJECT
  public:
    explicit TZKOglShape(QObject* owner = nullptr);
    ~TZKOglShape() override;

    void Doplay() override;
};

}  // namespace zk
