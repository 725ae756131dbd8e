// Forms. Bytes that begin with "<" are the file as it stands. Others are lines that a file is made of, so that what is
// changed in them stays XML: "w 3 name" begins a widget of the class with that number, "p name kind value" gives it a
// property, "c from signal to slot" connects, any other line ends a widget. Whatever the file says, loading ends with a
// form or with the reason why there is none, and no component is left silent.
#include <zk/_zkoglcanvas.h>
#include <zk/forms.h>
#include <zk/host/message.h>
#include <zk/host/propertypath.h>

#include <QApplication>
#include <QBuffer>
#include <QMetaProperty>
#include <QPointer>
#include <QXmlStreamWriter>

#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace zk;

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

// Qt's loader of forms speaks to standard error.
void BeQuiet(QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& /*text*/) {}

QString ClassOf(int number) {
    static const char* const others[] = {"QWidget", "QLabel", "QGroupBox", "QPushButton",
                                         "QDialog", "QFrame", "Unknown",   "QStackedWidget"};
    const auto ours = FormClasses();
    const int count = int(ours.size()) + int(std::size(others));
    number = (number % count + count) % count;
    return QString::fromLatin1(number < int(ours.size()) ? ours[std::size_t(number)].Name
                                                         : others[number - int(ours.size())]);
}

// What XML cannot hold would end the file there.
QString Clean(QString text) {
    for (QChar& one : text)
        if (one < QLatin1Char(' ') || one.isSurrogate() || one.unicode() >= 0xFFFE)
            one = QLatin1Char('?');
    return text;
}

void WriteValue(QXmlStreamWriter& xml, const QString& kind, const QString& value) {
    static const QStringList kinds{"string", "cstring", "enum",     "set",       "bool", "number",
                                   "double", "float",   "longLong", "uLongLong", "UInt", "pixmap"};
    const QStringList parts = value.split(QLatin1Char(','));
    const auto pieces = [&](const char* of, const QStringList& names) {
        xml.writeStartElement(QString::fromLatin1(of));
        for (qsizetype i = 0; i < parts.size(); ++i)
            xml.writeTextElement(names[i % names.size()], parts[i]);
        xml.writeEndElement();
    };
    if (kind == QLatin1String("color"))
        pieces("color", {"red", "green", "blue"});
    else if (kind == QLatin1String("list"))
        pieces("stringlist", {"string"});
    else if (kind == QLatin1String("rect"))
        pieces("rect", {"x", "y", "width", "height"});
    else
        xml.writeTextElement(kinds.contains(kind) ? kind : QStringLiteral("cstring"), value);
}

QByteArray FileOf(const QByteArray& lines) {
    QByteArray file;
    QXmlStreamWriter xml(&file);
    xml.writeStartElement(QStringLiteral("ui"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
    xml.writeStartElement(QStringLiteral("widget"));
    xml.writeAttribute(QStringLiteral("class"), QStringLiteral("QWidget"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("Form"));
    int open = 0;
    QList<QStringList> connections;
    for (const QByteArray& line : lines.split('\n')) {
        const QStringList words = Clean(QString::fromUtf8(line)).split(QLatin1Char(' '));
        if (words[0] == QLatin1String("w") && open < 250) {
            xml.writeStartElement(QStringLiteral("widget"));
            xml.writeAttribute(QStringLiteral("class"), ClassOf(words.value(1).toInt()));
            xml.writeAttribute(QStringLiteral("name"), words.value(2));
            ++open;
        } else if (words[0] == QLatin1String("p")) {
            xml.writeStartElement(QStringLiteral("property"));
            xml.writeAttribute(QStringLiteral("name"), words.value(1));
            WriteValue(xml, words.value(2), words.mid(3).join(QLatin1Char(' ')));
            xml.writeEndElement();
        } else if (words[0] == QLatin1String("c")) {
            connections << words;
        } else if (open > 0) {
            xml.writeEndElement();
            --open;
        }
    }
    for (; open >= 0; --open)
        xml.writeEndElement();
    xml.writeStartElement(QStringLiteral("connections"));
    for (const QStringList& words : connections) {
        xml.writeStartElement(QStringLiteral("connection"));
        xml.writeTextElement(QStringLiteral("sender"), words.value(1));
        xml.writeTextElement(QStringLiteral("signal"), words.value(2));
        xml.writeTextElement(QStringLiteral("receiver"), words.value(3));
        xml.writeTextElement(QStringLiteral("slot"), words.value(4));
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return file;
}

void Check(const QObject& object) {
    const ComponentBase* component = ComponentBase::Of(&object);
    if (!component)
        return;
    Require(!component->IsLoadingOrStoring());
    const QMetaObject* meta = object.metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaObject* kind = ReferenceKind(meta, meta->property(i).name());
        if (!kind)
            continue;
        const QObject* target = meta->property(i).read(&object).value<QObject*>();
        Require(!target || kind->cast(target));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "form_fuzz";
    static char* argv[] = {name, nullptr};
    static const bool noDisplay = qputenv("QT_QPA_PLATFORM", "offscreen") && qputenv("DISPLAY", "");
    static_cast<void>(noDisplay);
    static const QApplication application(argc, argv);
    static const auto quiet = qInstallMessageHandler(BeQuiet);
    static_cast<void>(quiet);
    SetMessageHandler([](const std::string& text) { Require(!text.empty()); });
    if (size > 65536)
        return 0;

    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QByteArray file = bytes.startsWith('<') ? bytes : FileOf(bytes);
    QBuffer buffer(&file);
    FormLoader loader;
    std::unique_ptr<QWidget> form(loader.Load(buffer));
    Require(!FormReading::Current());
    for (const FormFault& fault : loader.Faults())
        Require(!fault.Text().isEmpty());
    if (form) {
        for (const QObject* object : form->findChildren<QObject*>())
            Check(*object);
    } else {
        Require(!loader.Faults().empty() && loader.Faults().back().What == FormFault::Kind::UnreadableFile);
    }
    // Half of the forms go the usual way, the others with their components one by one, from the front.
    while (form && size % 2 == 0 && !form->children().isEmpty())
        delete form->children().first();
    form.reset();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
