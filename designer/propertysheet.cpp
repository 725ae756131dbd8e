#include "propertysheet.h"

#include "formkeeper.h"
#include "references.h"
#include "standin.h"

#include <zk/_zkcomtypes/enums.h>
#include <zk/host/message.h>

#include <QLocale>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QExtensionManager>

#include <algorithm>
#include <exception>

namespace zk {

namespace {

QHash<const QObject*, ComponentSheet*>& sheets() {
    static auto& all = *new QHash<const QObject*, ComponentSheet*>;
    return all;
}

// Counts what an attribute object tells of, as long as the counter lives.
class ChangeCounter : public QObject {
  public:
    explicit ChangeCounter(QObject* object) {
        const QMetaObject* type = object->metaObject();
        const int signal = type->indexOfSignal("OnChange(QObject*)");
        if (signal >= 0)
            QMetaObject::connect(object, signal, this, QObject::staticMetaObject.methodCount());
    }
    int Count() const { return count_; }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        id = QObject::qt_metacall(call, id, arguments);
        if (call == QMetaObject::InvokeMetaMethod && id == 0)
            ++count_;
        return id < 0 ? id : id - 1;
    }

  private:
    int count_ = 0;
};

QString shortName(const char* className) {
    const QString name = QString::fromLatin1(className);
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

// Bytes that stand for a text, whoever sends them: the property editor, a form's file, a program.
bool bytesOf(const QVariant& value, QByteArray& bytes) {
    switch (value.typeId()) {
        case QMetaType::QByteArray:
            bytes = value.toByteArray();
            return true;
        case QMetaType::QString:
            bytes = value.toString().toUtf8();
            return true;
        default:
            return false;
    }
}

}  // namespace

ComponentSheet::ComponentSheet(QDesignerFormEditorInterface* core, QWidget* widget,
                               QDesignerPropertySheetExtension* base, const QObject* pristine, QObject* parent)
    : QObject(parent), core_(core), widget_(widget), base_(base) {
    sheets().insert(widget, this);
    QObject* const running = StandIn::Running(widget);
    const bool isWidget = running == widget;
    const int inherited = QWidget::staticMetaObject.propertyCount();
    const int ofRunning = isWidget ? inherited : QObject::staticMetaObject.propertyCount();
    const QMetaObject* const type = running->metaObject();

    for (int i = 0; i < base->count(); ++i) {
        const QString name = base->propertyName(i);
        const int there = type->indexOfProperty(name.toLatin1());
        Field entry{Kind::Plain, name, {}, nullptr, nullptr, {}, base, i, false, {}};
        if (there >= ofRunning) {
            entry.object = running;
            entry.pristine = pristine;
            entry.property = type->property(there);
            entry.group = shortName(type->className());
            if (IsReference(entry.property))
                entry.kind = Kind::Reference;
            else if (entry.property.metaType().flags() & QMetaType::PointerToQObject)
                entry.kind = Kind::Owned;
            else if (entry.property.typeId() == QMetaType::QString)
                entry.kind = Kind::Text;
            else if (entry.property.typeId() == QMetaType::QStringList)
                entry.kind = Kind::List;
        } else if (!isWidget && name != QLatin1String("objectName") && name != QLatin1String("geometry")) {
            entry.kind = Kind::Foreign;
        }
        fields_.push_back(entry);
    }
    for (int i = ofRunning; i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        if (IsReference(property) || !(property.metaType().flags() & QMetaType::PointerToQObject))
            continue;
        auto* owned = property.read(running).value<QObject*>();
        const auto* ownedPristine = property.read(pristine).value<QObject*>();
        const QString name = QString::fromLatin1(property.name());
        if (owned && ownedPristine)
            addFields(owned, ownedPristine,
                      qt_extension<QDesignerPropertySheetExtension*>(core->extensionManager(), owned),
                      name + QLatin1Char('.'), name);
    }
}

// The fields of an owned object, then those of the objects that it owns.
void ComponentSheet::addFields(QObject* object, const QObject* pristine, QDesignerPropertySheetExtension* sheet,
                               const QString& path, const QString& group) {
    if (!sheet)
        return;
    const QMetaObject* const type = object->metaObject();
    for (const bool deeper : {false, true}) {
        for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            const QString name = QString::fromLatin1(property.name());
            const bool owned = property.metaType().flags() & QMetaType::PointerToQObject;
            if (owned != deeper)
                continue;
            if (owned) {
                auto* next = property.read(object).value<QObject*>();
                const auto* nextPristine = property.read(pristine).value<QObject*>();
                if (next && nextPristine)
                    addFields(next, nextPristine,
                              qt_extension<QDesignerPropertySheetExtension*>(core_->extensionManager(), next),
                              path + name + QLatin1Char('.'), group + QStringLiteral(" → ") + name);
                continue;
            }
            Field entry{Kind::Plain, path + name,          group, object, pristine, property,
                        sheet,       sheet->indexOf(name), true,  {}};
            if (property.typeId() == QMetaType::QString)
                entry.kind = Kind::Text;
            else if (property.metaType() == QMetaType::fromType<TDefmatKind>())
                entry.kind = Kind::Trigger;
            fields_.push_back(entry);
        }
    }
}

ComponentSheet::~ComponentSheet() {
    sheets().remove(widget_);
}

ComponentSheet* ComponentSheet::Of(const QObject* widget) {
    return sheets().value(widget);
}

QList<ComponentSheet*> ComponentSheet::All() {
    return sheets().values();
}

FormKeeper* ComponentSheet::Keeper() const {
    return FormKeeper::Of(QDesignerFormWindowInterface::findFormWindow(widget_));
}

const ComponentSheet::Field* ComponentSheet::field(int index) const {
    return index >= 0 && index < int(fields_.size()) ? &fields_[std::size_t(index)] : nullptr;
}

ComponentSheet::Field* ComponentSheet::field(int index) {
    return index >= 0 && index < int(fields_.size()) ? &fields_[std::size_t(index)] : nullptr;
}

ComponentSheet::Kind ComponentSheet::KindOf(int index) const {
    const Field* f = field(index);
    return f ? f->kind : Kind::Foreign;
}

bool ComponentSheet::IsPicture(int index) const {
    const Field* f = field(index);
    return f && f->kind == Kind::Text && f->object && f->object->inherits("zk::TTexture") &&
           f->property.name() == QByteArrayView("Picture");
}

// --- references -----------------------------------------------------------------------------------------------------

bool ComponentSheet::fits(const Field& f, QWidget* target) const {
    const QObject* running = StandIn::Running(target);
    const QMetaObject* kind = ReferenceKind(f.object, f.property);
    return running && kind && target != widget_ && running->metaObject()->inherits(kind);
}

QStringList ComponentSheet::Candidates(int index) const {
    const Field* f = field(index);
    const FormKeeper* keeper = Keeper();
    QStringList names;
    if (!f || f->kind != Kind::Reference || !keeper)
        return names;
    for (QWidget* widget : keeper->Widgets()) {
        if (fits(*f, widget))
            names.append(widget->objectName());
    }
    return names;
}

// A reference is a name only until what it names is found: from then on it is that widget, whatever it is called.
void ComponentSheet::find(Field& f, const FormKeeper& keeper) const {
    if (f.target || f.text.isEmpty())
        return;
    if (f.found) {  // the widget has gone for good
        f.text.clear();
        return;
    }
    f.target = keeper.Find(QString::fromUtf8(f.text));
    f.found = f.target;
}

QWidget* ComponentSheet::Target(int index) const {
    FormKeeper* keeper = Keeper();
    if (!keeper || index < 0 || index >= int(fields_.size()))
        return nullptr;
    Field& f = fields_[std::size_t(index)];
    find(f, *keeper);
    return f.target && keeper->Has(f.target) ? f.target.data() : nullptr;
}

void ComponentSheet::tell(Field& f, const QString& value, const QString& what) {
    if (std::exchange(f.told, true))
        return;
    ShowMessage(QStringLiteral("%1.%2 = \"%3\": %4").arg(widget_->objectName(), f.name, value, what));
}

bool ComponentSheet::bind(Field& f, QObject* target) {
    if (f.bound == target || !f.object)
        return false;
    f.bound = nullptr;
    try {
        if (WriteReference(f.object, f.property, target))
            f.bound = target;
    } catch (const std::exception& error) {
        tell(f, QString::fromUtf8(f.text), QString::fromUtf8(error.what()).trimmed());
    }
    return true;
}

bool ComponentSheet::Resolve() {
    FormKeeper* keeper = Keeper();
    if (!keeper)
        return false;
    const bool here = keeper->Has(widget_);
    bool changed = false;
    for (Field& f : fields_) {
        if (f.kind != Kind::Reference || !f.object)
            continue;
        find(f, *keeper);
        QObject* target = nullptr;
        if (here && f.target && keeper->Has(f.target)) {
            if (fits(f, f.target))
                target = StandIn::Running(f.target);
            else
                tell(f, QString::fromUtf8(f.text), tr("it cannot refer to this component"));
        } else if (here && !f.target && !f.text.isEmpty()) {
            tell(f, QString::fromUtf8(f.text), tr("there is no such component on the form"));
        }
        changed = bind(f, target) || changed;
    }
    return changed;
}

void ComponentSheet::Follow(const QHash<QString, QString>& newNames) {
    for (Field& f : fields_) {
        if (f.kind != Kind::Reference || f.text.isEmpty())
            continue;
        const auto name = newNames.constFind(QString::fromUtf8(f.text));
        if (name == newNames.constEnd())
            continue;
        f.text = name->toUtf8();
        f.target = nullptr;
        f.found = false;
    }
}

// --- what Designer asks ---------------------------------------------------------------------------------------------

int ComponentSheet::count() const {
    return int(fields_.size());
}

int ComponentSheet::indexOf(const QString& name) const {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (fields_[i].name == name && (fields_[i].nested || base_->indexOf(name) == fields_[i].index))
            return int(i);
    }
    return -1;
}

QString ComponentSheet::propertyName(int index) const {
    const Field* f = field(index);
    return f ? f->name : QString();
}

QString ComponentSheet::propertyGroup(int index) const {
    const Field* f = field(index);
    if (!f)
        return {};
    return f->group.isEmpty() ? f->sheet->propertyGroup(f->index) : f->group;
}

void ComponentSheet::setPropertyGroup(int index, const QString& group) {
    if (Field* f = field(index))
        f->group = group;
}

bool ComponentSheet::hasReset(int index) const {
    const Field* f = field(index);
    return f && (f->object || f->sheet->hasReset(f->index));
}

bool ComponentSheet::reset(int index) {
    Field* f = field(index);
    if (!f)
        return false;
    if (!f->object)
        return f->sheet->reset(f->index);
    if (!f->pristine)
        return false;
    switch (f->kind) {
        case Kind::Reference:
            setProperty(index, QByteArray());
            return true;
        case Kind::Text:
            setProperty(index, f->property.read(f->pristine).toString().toUtf8());
            return true;
        case Kind::List:
            f->sheet->setProperty(f->index, f->property.read(f->pristine));
            return true;
        case Kind::Trigger:
            return true;
        default:
            return f->property.write(f->object, f->property.read(f->pristine));
    }
}

bool ComponentSheet::isVisible(int index) const {
    const Field* f = field(index);
    return f && f->kind != Kind::Foreign && f->kind != Kind::Owned && (f->nested || f->sheet->isVisible(f->index));
}

void ComponentSheet::setVisible(int index, bool visible) {
    if (const Field* f = field(index))
        f->sheet->setVisible(f->index, visible);
}

bool ComponentSheet::isAttribute(int index) const {
    const Field* f = field(index);
    return f && !f->nested && f->sheet->isAttribute(f->index);
}

void ComponentSheet::setAttribute(int index, bool attribute) {
    if (const Field* f = field(index); f && !f->nested)
        f->sheet->setAttribute(f->index, attribute);
}

QVariant ComponentSheet::property(int index) const {
    const Field* f = field(index);
    if (!f)
        return {};
    switch (f->kind) {
        case Kind::Reference:
            if (const QWidget* target = Target(index))
                return target->objectName().toUtf8();
            return f->found ? QByteArray() : f->text;
        case Kind::Text:
            if (!f->text.isNull())
                return f->text;
            return f->object ? f->property.read(f->object).toString().toUtf8() : QByteArray();
        case Kind::Owned:
            return {};
        default:
            return f->nested && !f->object ? QVariant() : f->sheet->property(f->index);
    }
}

void ComponentSheet::writeText(Field& f, const QByteArray& text) {
    f.text = QByteArray();
    f.told = false;
    const QString asWritten = QString::fromUtf8(text);
    QString here = asWritten;  // a form may have been made where numbers are written in another way
    const QString point = QLocale().decimalPoint();
    here.replace(QLatin1Char('.'), point).replace(QLatin1Char(','), point);
    try {
        f.property.write(f.object, asWritten);
        return;
    } catch (const std::exception& error) {
        // It stays as it was written, so that it can be put right, and nothing of a form's file gets lost.
        f.text = text;
        if (here == asWritten)
            return tell(f, asWritten, QString::fromUtf8(error.what()).trimmed());
    }
    try {
        f.property.write(f.object, here);
    } catch (const std::exception& error) {
        tell(f, asWritten, QString::fromUtf8(error.what()).trimmed());
    }
}

// Writing a trigger sets its siblings: they go into the form's file from now on. Writing the trigger's default, as an
// undo does, brings back what they were.
void ComponentSheet::setTrigger(Field& trigger, const QVariant& value) {
    QList<Sibling> siblings;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const Field& f = fields_[i];
        if (f.nested && f.object == trigger.object && f.kind == Kind::Plain)
            siblings.append({int(i), f.property.read(f.object), f.sheet->isChanged(f.index)});
    }
    const ChangeCounter counter(trigger.object);
    trigger.sheet->setProperty(trigger.index, value);
    if (counter.Count() > 0) {
        for (const Sibling& sibling : siblings) {
            const Field& f = fields_[std::size_t(sibling.index)];
            if (f.property.read(f.object) != sibling.value)
                f.sheet->setChanged(f.index, true);
        }
        pulled_.append(siblings);
    } else if (!pulled_.isEmpty()) {
        for (const Sibling& sibling : pulled_.takeLast()) {
            const Field& f = fields_[std::size_t(sibling.index)];
            f.property.write(f.object, sibling.value);
            f.sheet->setChanged(f.index, sibling.changed);
        }
    }
    // The property editor shows the values of before.
    QMetaObject::invokeMethod(
        this,
        [this] {
            QDesignerPropertyEditorInterface* editor = core_->propertyEditor();
            if (editor && editor->object() == widget_)
                editor->setObject(widget_);
        },
        Qt::QueuedConnection);
}

void ComponentSheet::setProperty(int index, const QVariant& value) {
    Field* f = field(index);
    if (!f || (f->nested && !f->object))
        return;
    QByteArray bytes;
    switch (f->kind) {
        case Kind::Reference:
            if (!bytesOf(value, bytes))
                return;
            f->text = bytes;
            f->target = nullptr;
            f->found = false;
            f->told = false;
            if (FormKeeper* keeper = Keeper())
                keeper->Schedule();
            return;
        case Kind::Text:
            if (bytesOf(value, bytes))
                return writeText(*f, bytes);
            f->text = QByteArray();
            f->sheet->setProperty(f->index, value);
            return;
        case Kind::Owned:
            return;
        case Kind::Trigger:
            return setTrigger(*f, value);
        default:
            f->sheet->setProperty(f->index, value);
    }
}

bool ComponentSheet::isChanged(int index) const {
    const Field* f = field(index);
    if (!f || f->kind == Kind::Owned || f->kind == Kind::Trigger)
        return false;
    if (f->kind == Kind::Reference && property(index).toByteArray().isEmpty())
        return false;
    return f->sheet->isChanged(f->index);
}

void ComponentSheet::setChanged(int index, bool changed) {
    if (const Field* f = field(index))
        f->sheet->setChanged(f->index, changed);
}

bool ComponentSheet::isEnabled(int index) const {
    const Field* f = field(index);
    return f && (f->nested || f->sheet->isEnabled(f->index));
}

// --- dynamic properties ---------------------------------------------------------------------------------------------
//
// A form's file may name a property that the class does not have: it is kept as a dynamic one, and written again. A
// path counts as one, too, while it is to be written: so it is marked as one that has no setter of its own.

int ComponentSheet::addDynamicProperty(const QString& name, const QVariant& value) {
    const int known = indexOf(name);
    if (known >= 0 && fields_[std::size_t(known)].nested) {
        setProperty(known, value);
        return known;
    }
    auto* dynamic = dynamic_cast<QDesignerDynamicPropertySheetExtension*>(base_);
    const int there = dynamic ? dynamic->addDynamicProperty(name, value) : -1;
    if (there < 0)
        return -1;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (!fields_[i].nested && fields_[i].index == there) {
            fields_[i].name = name;
            return int(i);
        }
    }
    fields_.push_back({Kind::Plain, name, {}, nullptr, nullptr, {}, base_, there, false, {}});
    return int(fields_.size()) - 1;
}

bool ComponentSheet::removeDynamicProperty(int index) {
    const Field* f = field(index);
    auto* dynamic = dynamic_cast<QDesignerDynamicPropertySheetExtension*>(base_);
    if (!f || !dynamic)
        return false;
    if (f->nested) {
        setChanged(index, false);
        return reset(index);
    }
    return dynamic->removeDynamicProperty(f->index);
}

bool ComponentSheet::isDynamicProperty(int index) const {
    const Field* f = field(index);
    if (!f)
        return false;
    if (f->nested)
        return isChanged(index);
    const auto* dynamic = dynamic_cast<const QDesignerDynamicPropertySheetExtension*>(base_);
    return dynamic && dynamic->isDynamicProperty(f->index);
}

bool ComponentSheet::canAddDynamicProperty(const QString& name) const {
    const auto* dynamic = dynamic_cast<const QDesignerDynamicPropertySheetExtension*>(base_);
    return indexOf(name) < 0 && dynamic && dynamic->canAddDynamicProperty(name);
}

}  // namespace zk
