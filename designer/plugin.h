#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

namespace zk {

/// What Qt Designer loads: the fifteen components.
class ZkOglPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid FILE "plugin.json")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
  public:
    explicit ZkOglPlugin(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return entries_; }

  private:
    QList<QDesignerCustomWidgetInterface*> entries_;
};

}  // namespace zk
