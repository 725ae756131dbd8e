// Every published property and event of every class: its name and place, its type, the value of a new object, and that
// what is written is read. The table is published.txt.
#include "tables.h"

#include <zk/_zkcomtypes.h>
#include <zk/_zkdevice.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/host/componentref.h>
#include <zk/host/message.h>

#include <QColor>
#include <QMetaProperty>
#include <QWidget>

#include <functional>
#include <memory>

using namespace zk;
using namespace zk::test;

namespace {

struct Class {
    const QMetaObject* meta;
    std::function<QObject*()> make;
};

template <class T>
Class of() {
    return {&T::staticMetaObject, [] { return new T; }};
}

const std::map<QString, Class>& classes() {
    static const std::map<QString, Class> all{
        {"Tmaterial", of<Tmaterial>()},
        {"TPolyAttributes", of<TPolyAttributes>()},
        {"Tattributes", of<Tattributes>()},
        {"TTexture", of<TTexture>()},
        {"TZKOglLight", of<TZKOglLight>()},
        {"TZKCanvas3d", of<TZKCanvas3d>()},
        {"TZkOglCanvas", of<TZkOglCanvas>()},
        {"TZKOglControl", of<TZKOglControl>()},
        {"TZKOglScene", of<TZKOglScene>()},
        {"TZKOglRefScene", of<TZKOglRefScene>()},
        {"TCustomShape", of<TCustomShape>()},
        {"TZKOglShape", of<TZKOglShape>()},
        {"TZKOglRefShape", of<TZKOglRefShape>()},
        {"TZKOglBox", of<TZKOglBox>()},
        {"TZKOglSphere", of<TZKOglSphere>()},
        {"TZKOglCylinder", of<TZKOglCylinder>()},
        {"TZKOglPlane", of<TZKOglPlane>()},
        {"TEllipseWay", of<TEllipseWay>()},
        {"TTimer", of<TTimer>()},
        {"TZkOglSequencer", of<TZkOglSequencer>()},
        {"TZkOglTimer", of<TZkOglTimer>()},
        {"TZKOglWay", of<TZKOglWay>()},
        {"TZKOglNav", of<TZKOglNav>()},
    };
    return all;
}

/// Something for a reference to refer to.
QObject* target(const QString& name) {
    if (name == "QWidget")
        return new QWidget;
    return classes().at(name.mid(4)).make();
}

QString text(const QMetaProperty& property, const QVariant& value) {
    if (property.isEnumType())
        return property.enumerator().isFlag() || property.typeName()[4] == 'b'
                   ? QString::number(value.toInt())
                   : QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    if (value.metaType().flags() & QMetaType::PointerToQObject)
        return value.value<QObject*>() ? QStringLiteral("own") : QStringLiteral("none");
    switch (value.typeId()) {
        case QMetaType::QColor:
            return value.value<QColor>().name();
        case QMetaType::QStringList:
            return value.toStringList().join(u';');
        case QMetaType::Double:
            return QString::number(value.toDouble(), 'g', 15);
        default:
            break;
    }
    if (value.metaType() == QMetaType::fromType<ComponentRef>())
        return value.value<ComponentRef>().IsNull() ? QStringLiteral("none") : QStringLiteral("some");
    return value.toString();
}

QVariant valueOf(const QMetaProperty& property, const QString& text) {
    switch (property.typeId()) {
        case QMetaType::QColor:
            return QColor(text);
        case QMetaType::QStringList:
            return text.split(u';');
        case QMetaType::Double:
            return text.toDouble();
        case QMetaType::Bool:
            return text == "true";
        case QMetaType::Int:
            return text.toInt();
        default:
            break;
    }
    if (property.isEnumType() && text[0].isDigit())
        return text.toInt();
    return text;
}

struct PropertyRow {
    QStringList columns;
    int place;  // among those of its class that are events, or among those that are not
    QString Class() const { return columns.value(0); }
    QString Name() const { return columns.value(1); }
    bool IsEvent() const { return columns.value(2) == "event"; }
    friend void PrintTo(const PropertyRow& row, std::ostream* out) { *out << row.columns.join(u' ').toStdString(); }
};

std::vector<PropertyRow> propertyRows(bool events) {
    std::vector<PropertyRow> chosen;
    std::map<QString, int> places;
    for (const QStringList& columns : ReadTable("published.txt")) {
        const PropertyRow row{columns, 0};
        if (row.IsEvent() == events)
            chosen.push_back({columns, places[row.Class()]++});
    }
    return chosen;
}

std::string propertyRowName(const testing::TestParamInfo<PropertyRow>& row) {
    return TestName(row.param.Class() + '_' + row.param.Name());
}

class Silent {
  public:
    Silent() : before_(SetMessageHandler([](const std::string&) {})) {}
    ~Silent() { SetMessageHandler(before_); }

  private:
    MessageHandler before_;
};

/// The attribute object that carries the mark: the object itself, or one that it owns.
QObject* marked(QObject* object) {
    auto* const attributes = qobject_cast<Tattributes*>(object);
    return attributes ? attributes->getMaterial() : object;
}

void mark(QObject* object) {
    object = marked(object);
    if (auto* material = qobject_cast<Tmaterial*>(object))
        material->SetDiffuse(0x123456);
    else if (auto* style = qobject_cast<TPolyAttributes*>(object))
        style->SetMode(glline);
    else
        qobject_cast<TTexture*>(object)->SetWorldWidth(7);
}

bool isMarked(QObject* object) {
    object = marked(object);
    if (const auto* material = qobject_cast<Tmaterial*>(object))
        return material->GetDiffuse() == 0x123456;
    if (const auto* style = qobject_cast<TPolyAttributes*>(object))
        return style->GetMode() == glline;
    return qobject_cast<TTexture*>(object)->getWorldwidth() == 7;
}

QVariant pointerTo(QObject* object) {
    if (auto* attributes = qobject_cast<Tattributes*>(object))
        return QVariant::fromValue(attributes);
    if (auto* material = qobject_cast<Tmaterial*>(object))
        return QVariant::fromValue(material);
    if (auto* style = qobject_cast<TPolyAttributes*>(object))
        return QVariant::fromValue(style);
    return QVariant::fromValue(qobject_cast<TTexture*>(object));
}

/// The signals of the class itself; for an event that a base tells of, those of the base.
std::vector<QMetaMethod> eventsOf(const QMetaObject* meta, bool own) {
    std::vector<QMetaMethod> events;
    for (int i = own ? meta->methodOffset() : QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i)
        if (meta->method(i).methodType() == QMetaMethod::Signal && meta->method(i).name().startsWith("On"))
            events.push_back(meta->method(i));
    return events;
}

std::vector<QString> names() {
    std::vector<QString> all;
    for (const auto& one : classes())
        all.push_back(one.first);
    return all;
}

std::string className(const testing::TestParamInfo<QString>& name) {
    return TestName(name.param);
}

}  // namespace

class Published : public testing::TestWithParam<PropertyRow> {};

TEST_P(Published, Property) {
    const PropertyRow& row = GetParam();
    const Silent silent;
    const Class& kind = classes().at(row.Class());
    Count("properties", row.Class());

    // Name and place.
    ASSERT_LT(kind.meta->propertyOffset() + row.place, kind.meta->propertyCount());
    const QMetaProperty property = kind.meta->property(kind.meta->propertyOffset() + row.place);
    ASSERT_EQ(row.Name().toStdString(), property.name());

    // Type. It is stored with forms.
    EXPECT_EQ(row.columns[2].toStdString(), property.typeName());
    EXPECT_TRUE(property.isReadable());
    EXPECT_TRUE(property.isWritable());
    EXPECT_TRUE(property.isStored());
    EXPECT_TRUE(property.isDesignable());

    // The value of a new object.
    const std::unique_ptr<QObject> object(kind.make());
    const QVariant before = property.read(object.get());
    // Captions are blanks, which columns do not show.
    EXPECT_EQ(row.columns[3].toStdString(), text(property, before).trimmed().toStdString());

    // What is written is read.
    const QString& written = row.columns[4];
    if (row.columns[2] == "zk::ComponentRef") {
        const std::unique_ptr<QObject> to(target(written));
        EXPECT_TRUE(property.write(object.get(), QVariant::fromValue(ComponentRef(to.get()))));
        EXPECT_EQ(property.read(object.get()).value<ComponentRef>().Object(), to.get());
        EXPECT_TRUE(property.write(object.get(), QVariant::fromValue(ComponentRef())));
        EXPECT_TRUE(property.read(object.get()).value<ComponentRef>().IsNull());
        return;
    }
    if (written == "values") {
        // The values are taken over, the object stays.
        const std::unique_ptr<QObject> source(classes().at(row.columns[2].mid(4).chopped(1)).make());
        QObject* const own = before.value<QObject*>();
        mark(source.get());
        EXPECT_FALSE(isMarked(own));
        EXPECT_TRUE(property.write(object.get(), pointerTo(source.get())));
        EXPECT_EQ(property.read(object.get()).value<QObject*>(), own);
        EXPECT_TRUE(isMarked(own));
        return;
    }
    EXPECT_TRUE(property.write(object.get(), valueOf(property, written)));
    const QString read = row.columns.value(5).isEmpty() ? written : row.columns[5];
    EXPECT_EQ(read.toStdString(), text(property, property.read(object.get())).toStdString());
}

INSTANTIATE_TEST_SUITE_P(Table, Published, testing::ValuesIn(propertyRows(false)), propertyRowName);

class Events : public testing::TestWithParam<PropertyRow> {};

TEST_P(Events, Signal) {
    const PropertyRow& row = GetParam();
    const Class& kind = classes().at(row.Class());
    Count("events", row.Class());
    std::vector<QMetaMethod> events = eventsOf(kind.meta, true);
    const QByteArray signature = (row.Name() + '(' + row.columns[3] + ')').toLatin1();
    // `OnPlay` is declared where it is told of, in the base.
    if (events.empty())
        events = eventsOf(kind.meta, false);
    if (row.Name() == "OnPlay") {
        EXPECT_GE(kind.meta->indexOfSignal(signature), 0) << signature.toStdString();
        return;
    }
    ASSERT_LT(std::size_t(row.place) - (row.Class() == "TZKOglScene" ? 1 : 0), events.size());
    EXPECT_EQ(events[std::size_t(row.place)].methodSignature().toStdString(), signature.toStdString());
    EXPECT_EQ(events[std::size_t(row.place)].parameterTypes().first(), "QObject*");
}

INSTANTIATE_TEST_SUITE_P(Table, Events, testing::ValuesIn(propertyRows(true)), propertyRowName);

class Complete : public testing::TestWithParam<QString> {};

TEST_P(Complete, NothingElseIsPublished) {
    const QMetaObject* meta = classes().at(GetParam()).meta;
    QStringList expected;
    for (const PropertyRow& row : propertyRows(false))
        if (row.Class() == GetParam())
            expected << row.Name();
    QStringList found;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        found << QString::fromLatin1(meta->property(i).name());
    EXPECT_EQ(expected.join(' ').toStdString(), found.join(' ').toStdString());
    // What stands between a class of the table and Qt has no properties that the table does not know.
    for (const QMetaObject* base = meta->superClass(); base; base = base->superClass()) {
        const QString name = QString::fromLatin1(base->className());
        const bool ours = name.startsWith("zk::");
        EXPECT_TRUE(!ours || classes().count(name.mid(4)) || base->propertyOffset() == base->propertyCount())
            << base->className();
    }
    Count("classes", "complete");
}

INSTANTIATE_TEST_SUITE_P(Classes, Complete, testing::ValuesIn(names()), className);
