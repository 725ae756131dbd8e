#pragma once

#include <zk/export.h>
#include <zk/host/color.h>

namespace zk {

/// The parameters of lighting as a whole. Setters store and do nothing else.
class ZKCOMTYPES_API TLightModel {
  public:
    virtual ~TLightModel() = default;

    /// The light that is everywhere, whatever lights there are; black at first.
    virtual TColor Getambient() const;
    virtual void SetAmbient(TColor Value);
    /// A number rather than a flag, on purpose: it is handed to OpenGL as one. Other than 0 means that the viewer is
    /// near.
    virtual double GetLocalViewer() const;
    virtual void SetLocalviewer(double Value);
    /// Whether backs are lit with normals of their own; off at first.
    virtual bool GetTwoside() const;
    virtual void SetTwoside(bool Value);

  protected:
    TColor ambient_ = 0;
    double localViewer_ = 0;
    bool twoside_ = false;
};

}  // namespace zk
