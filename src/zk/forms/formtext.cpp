#include "formtext.h"

#include <QColor>
#include <QHash>
#include <QStringList>
#include <QWidget>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <array>
#include <optional>
#include <tuple>
#include <utility>

namespace zk {

namespace {

class Reader {
  public:
    explicit Reader(const QByteArray& file) : xml_(file), rest_(&text_.Rest) {}

    FormText Read(QHash<QString, QString> bases);

  private:
    /// A widget whose end has not come.
    struct Open {
        QString name;
        int depth;
        std::optional<std::size_t> control;  ///< which of the controls it is
    };

    bool next();
    void refuse(const QString& why);
    const FormClass* classOf(const QString& name) const;
    void widget();
    bool isOwnProperty() const;
    void component(FormEntry& entry);
    FormValue property(FormEntry& entry);
    std::pair<QVariant, QString> value();
    std::pair<QVariant, QString> color();
    std::pair<QVariant, QString> list();
    std::pair<QVariant, QString> rectangle();
    QString innerText();
    void skip();

    FormText text_;
    QXmlStreamReader xml_;
    QXmlStreamWriter rest_;
    QHash<QString, QString> bases_;  // of classes that the form names
    std::vector<Open> open_;
    int depth_ = 0;
    int count_ = 0;
};

// One token further; false at the end.
bool Reader::next() {
    if (xml_.atEnd() || !text_.Error.isEmpty())
        return false;
    switch (xml_.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth_ > FormLimits::Depth)
                refuse(QStringLiteral("its elements are nested too deeply"));
            break;
        case QXmlStreamReader::EndElement:
            --depth_;
            break;
        case QXmlStreamReader::Invalid:
            refuse(QStringLiteral("line %1: %2").arg(xml_.lineNumber()).arg(xml_.errorString()));
            break;
        default:
            break;
    }
    return text_.Error.isEmpty();
}

void Reader::refuse(const QString& why) {
    if (text_.Error.isEmpty())
        text_.Error = why;
}

// A class of the application's own that is derived from a component is made as that one.
const FormClass* Reader::classOf(const QString& name) const {
    QString known = name;
    for (int i = 0; i < 10; ++i) {
        if (const FormClass* found = FindFormClass(known))
            return found;
        known = bases_.value(known);
    }
    return nullptr;
}

FormText Reader::Read(QHash<QString, QString> bases) {
    bases_ = std::move(bases);
    bool isForm = false;
    while (next()) {
        const bool starts = xml_.tokenType() == QXmlStreamReader::StartElement;
        const bool ends = xml_.tokenType() == QXmlStreamReader::EndElement;
        if (starts && depth_ == 1) {
            isForm = xml_.name() == QLatin1String("ui");
            if (!isForm)
                refuse(QStringLiteral("it is no form"));
        }
        if (starts && xml_.name() == QLatin1String("widget")) {
            widget();
            continue;
        }
        if (starts && isOwnProperty()) {
            FormEntry& control = text_.Controls[*open_.back().control];
            control.Values.push_back(property(control));
            continue;
        }
        if (ends && !open_.empty() && depth_ < open_.back().depth)
            open_.pop_back();
        if (xml_.tokenType() == QXmlStreamReader::DTD)
            continue;
        rest_.writeCurrentToken(xml_);
    }
    if (!isForm)
        refuse(QStringLiteral("it is no form"));
    return std::move(text_);
}

// At the start of a widget. What is no component is left to `Read`, and of a control all but its own properties.
void Reader::widget() {
    if (++count_ > FormLimits::Widgets)
        refuse(QStringLiteral("it has too many widgets"));
    const QString className = xml_.attributes().value(QLatin1String("class")).toString();
    const QString name = xml_.attributes().value(QLatin1String("name")).toString();
    const FormClass* made = classOf(className);
    FormEntry entry{made, className, name, open_.empty() ? QString() : open_.back().name, {}, false, {}};
    if (made && !made->IsWidget) {
        component(entry);
        text_.Components.push_back(std::move(entry));
        return;
    }
    rest_.writeCurrentToken(xml_);
    open_.push_back({name, depth_, made ? std::optional(text_.Controls.size()) : std::nullopt});
    if (made)
        text_.Controls.push_back(std::move(entry));
}

// True for a property that a control has and other widgets have not.
bool Reader::isOwnProperty() const {
    return !open_.empty() && open_.back().control && depth_ == open_.back().depth + 1 &&
           xml_.name() == QLatin1String("property") &&
           QWidget::staticMetaObject.indexOfProperty(
               xml_.attributes().value(QLatin1String("name")).toUtf8().constData()) < 0;
}

// All of a component that is no widget. What stands in it besides its properties has nothing to stand in.
void Reader::component(FormEntry& entry) {
    const int depth = depth_;
    while (next() && depth_ >= depth) {
        if (xml_.tokenType() != QXmlStreamReader::StartElement)
            continue;
        if (xml_.name() != QLatin1String("property")) {
            skip();
            continue;
        }
        FormValue value = property(entry);
        if (value.Property != QLatin1String("geometry"))
            entry.Values.push_back(std::move(value));
    }
}

FormValue Reader::property(FormEntry& entry) {
    FormValue found{xml_.attributes().value(QLatin1String("name")).toString(), {}, {}};
    const int depth = depth_;
    bool first = true;
    while (next() && depth_ >= depth) {
        if (xml_.tokenType() != QXmlStreamReader::StartElement)
            continue;
        if (!std::exchange(first, false)) {
            skip();
            continue;
        }
        std::tie(found.Value, found.Text) = value();
    }
    if (found.Property == QLatin1String("geometry") && found.Value.typeId() == QMetaType::QRect) {
        entry.HasPlace = true;
        entry.Place = found.Value.toRect();
    }
    return found;
}

std::pair<QVariant, QString> Reader::value() {
    const QString kind = xml_.name().toString();
    if (kind == QLatin1String("color"))
        return color();
    if (kind == QLatin1String("stringlist"))
        return list();
    if (kind == QLatin1String("rect"))
        return rectangle();
    const QString text = innerText();
    const QString trimmed = text.trimmed();
    bool ok = true;
    QVariant value;
    if (kind == QLatin1String("string") || kind == QLatin1String("enum") || kind == QLatin1String("set"))
        value = text;
    else if (kind == QLatin1String("cstring"))
        value = text.toUtf8();
    else if (kind == QLatin1String("bool"))
        value = trimmed == QLatin1String("true");
    else if (kind == QLatin1String("number"))
        value = trimmed.toInt(&ok);
    else if (kind == QLatin1String("double"))
        value = trimmed.toDouble(&ok);
    else if (kind == QLatin1String("float"))
        value = double(trimmed.toFloat(&ok));
    else if (kind == QLatin1String("UInt"))
        value = trimmed.toUInt(&ok);
    else if (kind == QLatin1String("longLong"))
        value = trimmed.toLongLong(&ok);
    else if (kind == QLatin1String("uLongLong"))
        value = trimmed.toULongLong(&ok);
    else
        ok = false;
    if (kind == QLatin1String("bool") && trimmed != QLatin1String("true") && trimmed != QLatin1String("false"))
        ok = false;
    return {ok ? value : QVariant(), text.isEmpty() ? QStringLiteral("") : text};
}

std::pair<QVariant, QString> Reader::color() {
    static constexpr std::array<const char*, 3> names{"red", "green", "blue"};
    std::array<int, 3> channels{0, 0, 0};
    bool right = true;
    bool hasAlpha = true;
    const QString alphaText = xml_.attributes().value(QLatin1String("alpha")).toString();
    const int alpha = alphaText.isEmpty() ? 255 : alphaText.toInt(&hasAlpha);
    QStringList texts;
    const int depth = depth_;
    while (next() && depth_ >= depth) {
        if (xml_.tokenType() != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml_.name().toString();
        const QString text = innerText();
        texts << text;
        bool known = false;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (name != QLatin1String(names[i]))
                continue;
            channels[i] = text.trimmed().toInt(&known);
            known = known && channels[i] >= 0 && channels[i] <= 255;
        }
        right = right && known;
    }
    right = right && hasAlpha && alpha >= 0 && alpha <= 255;
    const QVariant value = right ? QVariant(QColor(channels[0], channels[1], channels[2], alpha)) : QVariant();
    return {value, texts.join(QLatin1Char('/'))};
}

std::pair<QVariant, QString> Reader::list() {
    QStringList lines;
    const int depth = depth_;
    while (next() && depth_ >= depth)
        if (xml_.tokenType() == QXmlStreamReader::StartElement)
            lines << innerText();
    return {lines, lines.join(QLatin1Char('\n'))};
}

std::pair<QVariant, QString> Reader::rectangle() {
    QHash<QString, int> sides;
    QStringList texts;
    bool right = true;
    const int depth = depth_;
    while (next() && depth_ >= depth) {
        if (xml_.tokenType() != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml_.name().toString();
        const QString text = innerText();
        bool ok = false;
        texts << text;
        sides.insert(name, text.trimmed().toInt(&ok));
        right = right && ok;
    }
    const auto side = [&sides](const char* name) { return sides.value(QLatin1String(name)); };
    // Far away, the far corner would be beyond the numbers that there are.
    constexpr int most = 1 << 24;
    for (const int one : std::as_const(sides))
        right = right && one >= -most && one <= most;
    return {right ? QVariant(QRect(side("x"), side("y"), side("width"), side("height"))) : QVariant(),
            texts.join(QLatin1Char('/'))};
}

// The text of the element, without that of elements in it.
QString Reader::innerText() {
    QString text;
    const int depth = depth_;
    while (next() && depth_ >= depth)
        if (xml_.isCharacters() && depth_ == depth)
            text += xml_.text();
    return text;
}

void Reader::skip() {
    const int depth = depth_;
    while (next() && depth_ >= depth) {
    }
}

// The classes that the form names as derived from others, which stand behind the widgets that are of them.
QHash<QString, QString> basesIn(const QByteArray& file) {
    QHash<QString, QString> bases;
    QXmlStreamReader xml(file);
    QString name;
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement())
            --depth;
        if (!xml.isStartElement())
            continue;
        if (++depth > FormLimits::Depth)
            break;
        if (xml.name() == QLatin1String("customwidget"))
            name.clear();
        if (depth != 4 || (xml.name() != QLatin1String("class") && xml.name() != QLatin1String("extends")))
            continue;
        const bool isName = xml.name() == QLatin1String("class");
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        --depth;
        if (isName)
            name = text;
        else if (!name.isEmpty())
            bases.insert(name, text);
    }
    return bases;
}

}  // namespace

FormText TakeApart(const QByteArray& file) {
    if (file.size() > FormLimits::Bytes) {
        FormText refused;
        refused.Error = QStringLiteral("it is too large");
        return refused;
    }
    return Reader(file).Read(basesIn(file));
}

}  // namespace zk
