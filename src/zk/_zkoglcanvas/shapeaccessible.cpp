#include "shapeaccessible.h"

#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/control.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/host/glsurface.h>

#include <QAccessible>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QPointer>

#include <vector>

namespace zk {

namespace {

/// The control that shows a shape: that of its scene's canvas. Null where there is none.
TZKOglControl* controlOf(const QObject* shape) {
    const auto* listed = qobject_cast<const TZkShape*>(shape);
    const auto* scene = listed ? qobject_cast<const TZKOglScene*>(listed->GetDisplayList()) : nullptr;
    const TZkOglCanvas* canvas = scene ? scene->GetZkOglCanvas() : nullptr;
    return canvas ? qobject_cast<TZKOglControl*>(canvas->GetWinControl()) : nullptr;
}

QString nameOf(const QObject& object) {
    return object.objectName().isEmpty() ? QString::fromLatin1(object.metaObject()->className()) : object.objectName();
}

class ControlAccessible : public QAccessibleWidget {
  public:
    explicit ControlAccessible(TZKOglControl* control) : QAccessibleWidget(control, QAccessible::Canvas) {}

    struct ShapePlace {
        QPointer<QObject> shape;
        QRectF place;
    };

    /// The shapes that a click can meet, as they are on the screen.
    const std::vector<ShapePlace>& Shapes() const {
        TZkOglCanvas* canvas = Control() ? Control()->Canvas() : nullptr;
        if (!canvas || !canvas->GetSelectEnabled()) {
            shapes_.clear();
            canvas_ = nullptr;
            return shapes_;
        }
        if ((canvas == canvas_ && canvas->PictureNumber() == picture_) || canvas->IsPainting() || canvas->IsSelecting())
            return shapes_;
        shapes_.clear();
        canvas_ = canvas;
        picture_ = canvas->PictureNumber();
        for (const THitPlace& place : canvas->Places()) {
            auto* shape = dynamic_cast<QObject*>(HitTarget::Of(place.HitObject));
            if (shape && controlOf(shape) == widget())
                shapes_.push_back({shape, place.Place});
        }
        return shapes_;
    }

    TZKOglControl* Control() const { return static_cast<TZKOglControl*>(widget()); }

    QRect PlaceOnScreen(const QObject* shape) const {
        for (const ShapePlace& shown : Shapes()) {
            if (shown.shape == shape)
                return onScreen(shown.place);
        }
        return {};
    }

    int childCount() const override { return int(Shapes().size()); }

    QAccessibleInterface* child(int index) const override {
        const std::vector<ShapePlace>& shapes = Shapes();
        if (index < 0 || index >= int(shapes.size()))
            return nullptr;
        return QAccessible::queryAccessibleInterface(shapes[std::size_t(index)].shape);
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const std::vector<ShapePlace>& shapes = Shapes();
        for (std::size_t i = 0; child && i < shapes.size(); ++i) {
            if (shapes[i].shape && shapes[i].shape == child->object())
                return int(i);
        }
        return -1;
    }

    // The one that was drawn last of those whose rectangle holds the point.
    QAccessibleInterface* childAt(int x, int y) const override {
        const std::vector<ShapePlace>& shapes = Shapes();
        for (auto shown = shapes.rbegin(); shown != shapes.rend(); ++shown) {
            if (onScreen(shown->place).contains(x, y))
                return QAccessible::queryAccessibleInterface(shown->shape);
        }
        return nullptr;
    }

    QAccessibleInterface* focusChild() const override {
        if (!Control()->hasFocus())
            return nullptr;
        auto* shape = dynamic_cast<QObject*>(Control()->CurrentShape());
        return shape && controlOf(shape) == widget() ? QAccessible::queryAccessibleInterface(shape)
                                                     : const_cast<ControlAccessible*>(this);
    }

    QString text(QAccessible::Text kind) const override {
        const QString text = QAccessibleWidget::text(kind);
        if (!text.isEmpty())
            return text;
        if (kind == QAccessible::Name)
            return widget()->objectName();
        const GlSurface* surface = kind == QAccessible::Description ? GlSurface::Find(widget()) : nullptr;
        return surface ? surface->Notice() : text;  // why there is no picture
    }

  private:
    QRect onScreen(const QRectF& place) const {
        return {widget()->mapToGlobal(widget()->contentsRect().topLeft()) + place.toAlignedRect().topLeft(),
                place.toAlignedRect().size()};
    }

    mutable std::vector<ShapePlace> shapes_;
    mutable QPointer<TZkOglCanvas> canvas_;
    mutable std::uint64_t picture_ = 0;
};

class ShapeAccessible : public QAccessibleObject, public QAccessibleActionInterface {
  public:
    ShapeAccessible(QObject* shape, std::int32_t name) : QAccessibleObject(shape), name_(name) {}

    bool isValid() const override { return object() && HitTarget::Of(name_); }

    QAccessibleInterface* parent() const override {
        return isValid() ? QAccessible::queryAccessibleInterface(controlOf(object())) : nullptr;
    }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid())
            return {};
        if (kind == QAccessible::Name)
            return nameOf(*object());
        if (kind == QAccessible::Description)
            return QString::fromLatin1(object()->metaObject()->className()).section("::", -1);
        return {};
    }

    QRect rect() const override {
        const auto* control = static_cast<ControlAccessible*>(parent());
        return control ? control->PlaceOnScreen(object()) : QRect();
    }

    QAccessible::Role role() const override { return QAccessible::Graphic; }

    QAccessible::State state() const override {
        QAccessible::State state;
        TZKOglControl* control = isValid() ? controlOf(object()) : nullptr;
        if (!control) {
            state.invalid = true;
            return state;
        }
        state.focusable = control->focusPolicy() != Qt::NoFocus;
        state.focused = control->hasFocus() && control->CurrentShape() == HitTarget::Of(name_);
        state.disabled = !control->isEnabled();
        state.invisible = !control->isVisible() || rect().isNull();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }

    void doAction(const QString& action) override {
        TZKOglControl* control = isValid() ? controlOf(object()) : nullptr;
        if (!control || !control->isEnabled())
            return;
        if (action == pressAction()) {
            control->ClickShape(HitTarget::Of(name_));
        } else if (action == setFocusAction()) {
            control->setFocus(Qt::OtherFocusReason);
            control->SetCurrentShape(HitTarget::Of(name_));
        }
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    std::int32_t name_;
};

// Asked for each class of an object, the most derived one first.
QAccessibleInterface* accessibleOf(const QString& className, QObject* object) {
    if (auto* control = qobject_cast<TZKOglControl*>(object))
        return className == QLatin1String("zk::TZKOglControl") ? new ControlAccessible(control) : nullptr;
    if (className != QLatin1String("zk::TZkShape"))
        return nullptr;
    auto* target = dynamic_cast<HitTarget*>(object);
    return target ? new ShapeAccessible(object, target->HitName()) : nullptr;
}

}  // namespace

void InstallShapeAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(accessibleOf);
        return true;
    }();
    Q_UNUSED(installed)
}

void TellFocusOfShape(QObject* shape) {
    if (!shape || !QAccessible::isActive())
        return;
    QAccessibleEvent focus(shape, QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
}

}  // namespace zk
