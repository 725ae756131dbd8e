#include "pointtext.h"

#include <zk/_zkxyz/errors.h>
#include <zk/host/floattext.h>

#include <QStringView>

#include <array>

namespace zk {

namespace {

using TPieces = std::array<QString, 3>;

TPieces piecesOf(const QString& text) {
    TPieces pieces;
    Separate(text, QString(), QString(), QStringLiteral("/"), pieces);
    return pieces;
}

void blankFirst(QString& text, const QString& separator) {
    if (separator.isEmpty())
        return;
    const qsizetype at = text.indexOf(separator);
    if (at >= 0)
        text[at] = QLatin1Char(' ');
}

}  // namespace

QString xyztoStr(const TXYZ& P) {
    return FloatToStr(P.x) + QLatin1Char('/') + FloatToStr(P.y) + QLatin1Char('/') + FloatToStr(P.z);
}

TXYZ Strtoxyz(const QString& S) {
    const TPieces pieces = piecesOf(S);
    std::array<double, 3> values{};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (!TryStrToFloat(pieces[i], values[i])) {
            throw EConvertError('\'' + S.toStdString() + "' is not a point: '" + pieces[i].toStdString() +
                                "' is not a valid floating point value");
        }
    }
    return {values[0], values[1], values[2]};
}

bool TryStrtoxyz(const QString& S, TXYZ& P) {
    const TPieces pieces = piecesOf(S);
    std::array<double, 3> values{};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (!TryStrToFloat(pieces[i], values[i]))  // an empty piece is no number either
            return false;
    }
    P = {values[0], values[1], values[2]};
    return true;
}

bool CheckStrtoxyz(const QString& S) {
    TXYZ point;
    return TryStrtoxyz(S, point);
}

void Separate(const QString& S, const QString& Sep1, const QString& Sep2, const QString& Sep3,
              std::span<QString> Parts) {
    if (S.isEmpty())
        return;
    QString blanked = S;
    blankFirst(blanked, Sep1);
    blankFirst(blanked, Sep2);

    QStringView rest = blanked;
    const auto find = [&rest, &Sep3] { return Sep3.isEmpty() ? qsizetype(-1) : rest.indexOf(Sep3); };
    std::size_t i = 0;
    for (qsizetype at = find(); at >= 0 && i < Parts.size(); at = find()) {
        Parts[i++] = rest.left(at).toString();
        rest = rest.mid(at + Sep3.size());
        while (rest.startsWith(QLatin1Char(' ')))
            rest = rest.mid(1);
    }
    if (i < Parts.size())
        Parts[i] = rest.toString();
}

}  // namespace zk
