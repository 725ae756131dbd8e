#pragma once

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkcomtypes/lights.h>
#include <zk/_zkdevice/attributeskind.h>
#include <zk/_zkdevice/devicestate.h>
#include <zk/_zkdevice/primdevice.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>
#include <zk/host/component.h>

#include <QPointer>

#include <memory>

namespace zk {

/// Base of every surface that shows 3D geometry: it holds the viewing set-up, lights and current attributes, maps
/// points of space to pixels, and draws projected lines on a 2D device if one is attached.
///
/// Viewing: the projection plane is the XY plane of the projection base, whose Z axis points from the plane to the eye.
/// The view angle (degrees) sets how far the eye is; with 0 projection is parallel along the Z axis.
///
/// Pixels are the device-independent pixels of the host window (Qt's logical ones), y down, with the origin of the
/// plane in the middle. `UnitsPerCm` is the number of pixels to one centimetre of the projection plane.
///
/// A new device is 180 × 180 pixels, has 30 units per centimetre, parallel projection onto the unit base, the identity
/// as model matrix, both drawing switches on, no 2D device, no lights, and a fresh attribute set. Nothing is
/// range-checked; what bad numbers give is said where they are used. Setters store and do nothing else unless noted.
///
/// Every internal call between virtual operations goes through the virtual slot, so that an override takes part in all
/// that the device does.
class ZKDEVICE_API TZKDevice : public TComponent {
    Q_OBJECT
  public:
    explicit TZKDevice(QObject* owner = nullptr);

    /// Deletes the attribute set. The lights are not deleted: usually a form owns them and the device only lists them.
    /// A descendant whose lights are its own deletes them with `FreeLights`.
    ~TZKDevice() override;

    /// The left edge in pixels. Set alone: right stays, the width changes. Sums beyond 32 bits wrap around.
    std::int32_t GetLeft() const { return bounds_.left; }
    /// The top edge in pixels. Set alone: bottom stays, the height changes.
    std::int32_t GetTop() const { return bounds_.top; }
    void SetLeft(std::int32_t Value) { bounds_.left = Value; }
    void SetTop(std::int32_t Value) { bounds_.top = Value; }
    /// The bounds in pixels.
    const TRect& GetBounds() const { return bounds_; }

    /// Appends a light, also one that is in the list already. The list does not own what it lists, see the destructor;
    /// `SetLightClass` deletes all the same.
    virtual void AddLight(Tlight* Light);
    /// Takes the first occurrence out, without deleting the light.
    virtual void RemoveLight(Tlight* Light);

    /// Bottom minus top, in pixels. Setting it moves the bottom.
    virtual std::int32_t GetHeight() const;
    /// Right minus left, in pixels. Setting it moves the right edge.
    virtual std::int32_t GetWidth() const;
    virtual void SetHeight(std::int32_t Value);
    virtual void SetWidth(std::int32_t Value);

    /// The current attribute set, owned by the device.
    virtual Tattributes* getAttributes() const;

    /// The model matrix as a frame.
    virtual TBAse GetDrawBAse() const;
    /// The frame that projects: its XY plane is the projection plane, its Z axis points to the eye.
    virtual TBAse GetprojectionBAse() const;

    /// Degrees.
    virtual void SetBlickWinkel(double Value);
    virtual double GetBlickwinkel() const;

    /// A number of pixels per centimetre that is kept for descendants; nothing here uses it.
    virtual void SetDefaultUNits(double Value);
    double GetDefaultUNits() const { return defaultUNits_; }

    /// Sets the model matrix, through `SetModelMatrix`.
    virtual void SetDrawbase(const TBAse& Value);

    /// Kept for descendants; nothing here asks for it.
    virtual void Setenabled2d(bool Value);
    bool GetEnabled2d() const { return enabled2d_; }
    /// Off: projected lines are not drawn.
    virtual void Setenabled3d(bool Value);
    bool GetEnabled3d() const { return enabled3d_; }

    /// The transform of geometry before projection. The operations of this class that project do not apply it: it is
    /// `Checktrf` that does, and descendants.
    virtual Tmatrix GetModelMatrix() const;
    virtual void SetModelMatrix(const Tmatrix& Value);

    /// The axes are expected to be orthonormal.
    virtual void SetProjectionbase(const TBAse& Value);

    /// The 2D device to draw on, not owned; null detaches. It reads as null after it was deleted.
    virtual void SetPRimdevice(TZKPrimdevice* Value);
    TZKPrimdevice* GetPrimdevice() const { return primdevice_; }

    /// With 0 the eye distance is infinite or not a number, and so is what `GetProjectionKoord` gives.
    virtual void SetUnitsPerCm(double Value);
    double GetUnitsPerCm() const { return unitsPerCm_; }

    /// Opens (true) or closes (false) a batch of changes. The call that brings the count below 1 calls `Refresh`, which
    /// paints if the count is exactly 0: it is never clamped, by choice, so that a surplus close silences the device
    /// until it is made good.
    virtual void SetChanging(bool Value);
    bool GetChanging() const { return changing_; }

    /// `BeginPaint` and `EndPaint`, unless values are being loaded or stored, a paint is under way or a batch is open.
    /// An error that comes out of them ends the paint and is passed on.
    virtual void Refresh();

    /// Marks the beginning and the end of painting; descendants draw in an override and call these.
    virtual void BeginPaint();
    /// As `BeginPaint`.
    virtual void EndPaint();
    /// What the device is doing now.
    TDeviceState GetDeviceStates() const { return deviceStates_; }

    /// Drawing of projected lines. Nothing is drawn without a 2D device or while `Enabled3d` is off.
    virtual void PolyLine3D(const TXYZARRAY& A);
    /// Every array of the list as `PolyLine3D` draws it.
    virtual void PolyPolyline3D(const TlistOFxyzArray& L);
    /// A line from where the 2D device's pen is to the pixel of P.
    virtual void LineTo3d(const TXYZ& P);
    /// Moves the 2D device's pen to the pixel of P.
    virtual void Moveto3d(const TXYZ& P);

    /// Draws nothing here.
    virtual void Circle2d(const TXY& Center, double Radius);

    /// The distance of the eye from the projection plane: width / (2 · tan(view angle) · units per centimetre); 0 for
    /// the angle 0 (there is no eye), 1000 for 90 and 180. The whole angle goes into the tangent, by choice: it is the
    /// angle between the axis and the edge of the view. Between 90 and 180 the distance is negative, the eye behind the
    /// plane.
    virtual double AugeAbstand() const;

    /// The eye: on the Z axis of the projection base at the eye distance; its origin in parallel projection.
    TXYZ Auge() const;

    /// The image of P on a plane, in world coordinates: where the line through P and the eye, or along the projection
    /// base's Z axis in parallel projection, meets the plane. P itself if the line is parallel to the plane.
    TXYZ Projection(const TXYZ& P, const TPlane& Plane) const;

    /// The image of P on the projection plane, in the projection base's coordinates.
    TXY Projection(const TXYZ& P) const;

    /// Plane coordinates to pixels. Rounded to the nearest pixel, ties to even; beyond 32 bits the nearest 32-bit
    /// number and 0 for what is not a number. Half an odd size is truncated.
    TXYI GetDeviceKoord(const TXY& Q) const;
    /// Pixels to plane coordinates.
    TXY GetProjectionKoord(const TXYI& D) const;
    /// Space to pixels.
    TXYI WtoPixel(const TXYZ& P) const;
    /// Sets B, made ready with `ArrayInit`, to the pixels of the points of A.
    void Poly3dtoScr(const TXYZARRAY& A, TXYIARRAY& B) const;

    /// Deletes all lights in the list and begins a new list for lights of another kind.
    void SetLightClass(const TLightClass& LightClass);
    const TLightClass& GetLightClass() const { return lightClass_; }
    /// Never null.
    TLights* getLights() const { return lights_.get(); }

    /// The current attribute set by value. An object that the set lacks gives the defaults of the record.
    TAttributesKind getAttributeskind() const;
    /// Applies texture, material, mode and style in this order through the objects' setters, each if the set has it.
    void SetAttributeskind(const TAttributesKind& Kind);

    /// Begins drawing points that are transformed beforehand: the points of L multiplied by the model matrix, or L
    /// itself if that is the identity. `M` receives the model matrix and `Transformed` whether the result is a new
    /// list, which `CloseCheck` deletes.
    const TlistOFxyzArray* Checktrf(const TlistOFxyzArray& L, Tmatrix& M, bool& Transformed) const;

    /// Ends it: if `Transformed`, sets the model matrix to `M` and deletes `L`, the result of `Checktrf`. Nothing
    /// otherwise.
    void CloseCheck(const TlistOFxyzArray* L, const Tmatrix& M, bool Transformed);

    /// Resets the batch count and sets view angle and projection base again in one batch, so that overrides see the
    /// values that were read; refreshes once.
    void Loaded() override;
    bool IsLoadedLast() const override { return true; }

  protected:
    /// Deletes all lights in the list.
    void FreeLights();

    TRect bounds_{0, 0, 180, 180};
    TBAse projectionBase_ = Unitbase;
    Tmatrix modelMatrix_ = Identity;
    bool enabled2d_ = true;
    bool enabled3d_ = true;
    double unitsPerCm_ = 30.0;
    double defaultUNits_ = 30.0;
    double blickwinkel_ = 0.0;
    QPointer<TZKPrimdevice> primdevice_;
    TLightClass lightClass_;
    std::unique_ptr<TLights> lights_;
    QPointer<Tattributes> attributes_;
    TDeviceState deviceStates_;
    bool changing_ = false;
    std::int32_t changeCount_ = 0;
};

}  // namespace zk
