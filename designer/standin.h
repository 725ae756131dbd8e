#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>

namespace zk {

/// What stands on an edited form for a component that is no widget: its picture and its name. It owns a real component
/// and is that component to Qt Designer: the same class name, properties, signals and enumerations.
///
/// In Designer's preview, which is no edited form, it cannot be seen, and the component is as on a running form.
///
/// There is no Q_OBJECT on purpose: the meta-object is the component's (`MirroredClass`).
class StandIn : public QWidget {
  public:
    /// Owns `component` from now on.
    StandIn(QObject* component, const QPixmap& picture, QWidget* parent);

    /// The component; null only while the widget is being destroyed.
    QObject* Component() const { return component_; }

    /// What `widget` is on a running form: the component that it stands for, or the widget itself. Null for null.
    static QObject* Running(QWidget* widget);

    /// The size that the picture and a name of usual length need.
    static QSize IconSize() { return {76, 46}; }

    const QMetaObject* metaObject() const override;
    void* qt_metacast(const char* name) override;
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;
    QSize sizeHint() const override { return IconSize(); }

  protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QPointer<QObject> component_;
    QPixmap picture_;
};

}  // namespace zk
