#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/forms.h>

#include <QApplication>
#include <QBuffer>

#include <cstdio>
#include <memory>

// A form with a scene and a box in it; nothing is shown, so that no display is needed.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QByteArray text = R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
      <widget class="zk::TZKOglBox" name="box1">
        <property name="Scene" stdset="0"><cstring>scene1</cstring></property>
        <property name="Length" stdset="0"><double>2.5</double></property>
      </widget>
      <widget class="zk::TZKOglScene" name="scene1"/>
    </widget></ui>)";
    QBuffer form(&text);
    form.open(QIODevice::ReadOnly);
    zk::FormLoader loader;
    const std::unique_ptr<QWidget> window(loader.Load(form));
    const auto* box = window ? window->findChild<zk::TZKOglBox*>("box1") : nullptr;
    if (!box || !box->GetDisplayList() || box->GetA() != 2.5)
        return 1;
    std::printf("%s stands in %s\n", qPrintable(box->objectName()), qPrintable(box->GetDisplayList()->objectName()));
}
