#include "formloader.h"

#include <zk/forms/formtext.h>
#include <zk/host/propertypath.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QUiLoader>

#include <algorithm>
#include <utility>

namespace zk {

namespace {

/// Qt's loader, which hands out the controls among the components and makes the others beside what they stand in.
class Builder : public QUiLoader {
  public:
    Builder(const FormText& text, FormReading& reading) : text_(text), reading_(reading) {
        for (std::size_t i = 0; i < text.Components.size(); ++i)
            held_[text.Components[i].Parent].append(i);
        made_.resize(text.Components.size());
        for (std::size_t i = 0; i < text.Controls.size(); ++i)
            controls_[{text.Controls[i].ClassName, text.Controls[i].Name}].append(i);
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;

    /// Makes those whose widget was not, and writes the values of all.
    void Finish(QWidget& form);

  private:
    void make(std::size_t index, QObject* owner);
    void write(QObject* object, const FormEntry& entry);

    const FormText& text_;
    FormReading& reading_;
    QHash<QString, QList<std::size_t>> held_;  // by the name of the widget that they stand in
    std::vector<QPointer<QObject>> made_;
    QHash<std::pair<QString, QString>, QList<std::size_t>> controls_;  // to be made, by class and name
    std::vector<std::pair<QPointer<QObject>, const FormEntry*>> madeControls_;
};

QWidget* Builder::createWidget(const QString& className, QWidget* parent, const QString& name) {
    QWidget* widget = nullptr;
    // Qt makes the widgets of layouts after the others, so that controls do not come in the order of the file.
    if (QList<std::size_t>& waiting = controls_[{className, name}]; !waiting.isEmpty()) {
        const FormEntry& entry = text_.Controls[waiting.takeFirst()];
        widget = static_cast<QWidget*>(entry.Class->Make(parent));
        madeControls_.emplace_back(widget, &entry);
        reading_.Begin(*ComponentBase::Of(widget));
    }
    if (!widget)
        widget = QUiLoader::createWidget(className, parent, name);
    if (!widget) {
        reading_.AddFault(
            {FormFault::Kind::UnknownClass, name, {}, className, QStringLiteral("there is no such class")});
        return nullptr;
    }
    for (const std::size_t index : held_.take(name))
        make(index, widget);
    return widget;
}

void Builder::make(std::size_t index, QObject* owner) {
    const FormEntry& entry = text_.Components[index];
    QObject* const object = entry.Class->Make(owner);
    made_[index] = object;
    reading_.Begin(*ComponentBase::Of(object));
    object->setObjectName(entry.Name);
}

void Builder::Finish(QWidget& form) {
    const QPointer<QWidget> self = &form;
    QList<std::size_t> rest;
    for (const QList<std::size_t>& held : std::exchange(held_, {}))
        rest += held;
    std::sort(rest.begin(), rest.end());
    for (const std::size_t index : rest)
        make(index, &form);
    for (std::size_t i = 0; i < made_.size() && self; ++i)
        write(made_[i], text_.Components[i]);
    for (const auto& [control, entry] : madeControls_)
        write(control, *entry);
}

void Builder::write(QObject* object, const FormEntry& entry) {
    const QPointer<QObject> self = object;
    ComponentBase* const component = ComponentBase::Of(object);
    if (!component)
        return;
    reading_.Begin(*component);
    if (auto* placed = qobject_cast<TComponent*>(object); placed && entry.HasPlace)
        placed->setGeometry(entry.Place);
    for (const FormValue& value : entry.Values) {
        const auto fault = [&](FormFault::Kind kind, const QString& reason) {
            if (self)
                reading_.AddFault(FormReading::Fault(kind, *self, value.Property, value.Text, reason));
        };
        if (!self)
            return;
        QString whyNot;
        switch (WriteProperty(*self, value.Property, value.Value, &whyNot)) {
            case PropertyWritten::Yes:
                break;
            case PropertyWritten::NoSuchProperty:
                // Kept where it can be, and told then by the component itself.
                if (!value.Value.isValid() || value.Property.isEmpty() || value.Property.contains(QLatin1Char('.')))
                    fault(FormFault::Kind::UnknownProperty, whyNot);
                else
                    self->setProperty(value.Property.toUtf8(), value.Value);
                break;
            case PropertyWritten::BadValue:
                fault(FormFault::Kind::MalformedValue, whyNot);
                break;
        }
    }
}

}  // namespace

QWidget* FormLoader::Load(QIODevice& device, QWidget* parent) {
    const auto* file = qobject_cast<const QFileDevice*>(&device);
    const QString name = file ? file->fileName() : QStringLiteral("form");
    if (!device.isOpen() && !device.open(QIODevice::ReadOnly)) {
        faults_ = {{FormFault::Kind::UnreadableFile, name, {}, {}, device.errorString()}};
        if (telling_)
            FormReading::Tell(faults_);
        return nullptr;
    }
    return load(device.read(FormLimits::Bytes + 1), name, parent);
}

QWidget* FormLoader::LoadFile(const QString& fileName, QWidget* parent) {
    QFile file(fileName);
    return Load(file, parent);
}

QWidget* FormLoader::load(const QByteArray& file, const QString& name, QWidget* parent) {
    faults_.clear();
    QWidget* form = nullptr;
    FormText text = TakeApart(file);
    QString error = text.Error;
    if (error.isEmpty()) {
        FormReading reading;
        Builder builder(text, reading);
        if (const QFileInfo info(name); info.isFile())
            builder.setWorkingDirectory(info.dir());
        QBuffer rest(&text.Rest);
        rest.open(QIODevice::ReadOnly);
        QPointer<QWidget> made = builder.load(&rest, parent);
        if (made)
            builder.Finish(*made);
        else
            error = builder.errorString().isEmpty() ? QStringLiteral("it has no window") : builder.errorString();
        faults_ = reading.End();
        form = made;
    }
    if (!error.isEmpty())
        faults_.push_back({FormFault::Kind::UnreadableFile, name, {}, {}, error});
    if (telling_)
        FormReading::Tell(faults_);
    return form;
}

}  // namespace zk
