#pragma once

#include <zk/export.h>
#include <zk/host/formreading.h>

#include <QIODevice>
#include <QString>
#include <QWidget>

#include <vector>

namespace zk {

/// Makes a form of its `.ui` file while the program runs.
///
/// ```
/// zk::FormLoader loader;
/// QWidget* form = loader.LoadFile("scene.ui");
/// if (!form)
///     return 1;                                   // why not has been told
/// auto* box = form->findChild<zk::TZKOglBox*>("box1");
/// form->show();
/// ```
///
/// The widgets are made by Qt's own loader, the components by this one. A component belongs to the widget that it
/// stands in; references are found by name whatever the order in the file; `Loaded` is called once on each component,
/// and each canvas repaints once, when all is there (`FormReading`). What is wrong with a value costs that value alone,
/// is in `Faults`, and is told in one message. A class of the application's own that the form says is derived from a
/// component is made as that component.
///
/// Files may come from anywhere: one that is no form, is larger than 64 MiB, nested more than 200 elements deep or has
/// more than 100,000 widgets loads nothing. Texts are taken as they stand in the file, untranslated, where they are
/// values of components.
class ZKFORMS_API FormLoader {
  public:
    /// Null when the file is no form; otherwise the form, not shown yet, owned by `parent` or else by the caller. The
    /// device is opened if it is not open.
    QWidget* Load(QIODevice& device, QWidget* parent = nullptr);
    /// The same with the file of that name.
    QWidget* LoadFile(const QString& fileName, QWidget* parent = nullptr);

    /// What was wrong with the form that was loaded last.
    const std::vector<FormFault>& Faults() const { return faults_; }

    /// Off: faults are not told, `Faults` alone has them. On at first.
    void SetTelling(bool on) { telling_ = on; }

  private:
    QWidget* load(const QByteArray& file, const QString& name, QWidget* parent);

    std::vector<FormFault> faults_;
    bool telling_ = true;
};

}  // namespace zk
