#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <ostream>

// How Qt's values look in the messages of failing tests.

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << "[" << texts.join(" | ").toStdString() << "]";
}

inline void PrintTo(const QColor& color, std::ostream* out) {
    *out << color.name(QColor::HexArgb).toStdString();
}
