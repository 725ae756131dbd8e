#pragma once

#include <zk/_zkoglcanvas/canvas.h>

namespace gallery {

/// Opens a bracket of changes: however much changes in its scope, the canvas repaints once, at the end. Brackets nest.
class OneRepaint {
  public:
    explicit OneRepaint(zk::TZkOglCanvas* canvas) : canvas_(canvas) { canvas_->SetChanging(true); }
    ~OneRepaint() { canvas_->SetChanging(false); }
    OneRepaint(const OneRepaint&) = delete;
    OneRepaint& operator=(const OneRepaint&) = delete;

  private:
    zk::TZkOglCanvas* canvas_;
};

}  // namespace gallery
