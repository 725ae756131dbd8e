#include "floattext.h"

#include <zk/_zkxyz/errors.h>

#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace zk {

namespace {

constexpr int significantDigits = 15;

/// Digits without trailing zeros, at least one.
void stripZeros(std::string& digits) {
    const std::size_t last = digits.find_last_not_of('0');
    digits.resize(last == std::string::npos ? 1 : last + 1);
}

/// The power of ten of a number's first significant digit, for a number of digits, point and exponent that is not zero.
/// Exponents too long for an int count as very large ones.
long long leadingExponent(const std::string& number) {
    const std::size_t e = std::min(number.find('e'), number.size());
    const std::size_t point = std::min(number.find('.'), e);
    const std::size_t first = number.find_first_of("123456789");
    const long long leading =
        first < point ? static_cast<long long>(point - first) - 1 : -static_cast<long long>(first - point);
    if (e == number.size())
        return leading;
    const bool negative = number[e + 1] == '-';
    const std::size_t digits = e + (negative || number[e + 1] == '+' ? 2 : 1);
    long long exponent = 0;
    const auto parsed = std::from_chars(number.data() + digits, number.data() + number.size(), exponent);
    if (parsed.ec == std::errc::result_out_of_range || exponent > std::numeric_limits<long long>::max() / 2)
        exponent = std::numeric_limits<long long>::max() / 2;
    return leading + (negative ? -exponent : exponent);
}

}  // namespace

QString FloatToStr(double value) {
    if (std::isnan(value))
        return QStringLiteral("NAN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("INF") : QStringLiteral("-INF");
    if (value == 0)
        return QStringLiteral("0");

    // d.dddddddddddddde±xx, rounded once and for all to the digits that count
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific,
                                   significantDigits - 1);
    const std::string scientific(buffer, end.ptr);
    const std::size_t e = scientific.find('e');
    const int exponent = std::stoi(scientific.substr(e + 1));
    std::string digits = scientific.substr(0, 1) + scientific.substr(2, e - 2);
    stripZeros(digits);

    const QString point = QLocale().decimalPoint();
    QString text = value < 0 ? QStringLiteral("-") : QString();
    const auto append = [&text, &point](const std::string& whole, const std::string& fraction) {
        text += QString::fromStdString(whole);
        if (!fraction.empty())
            text += point + QString::fromStdString(fraction);
    };
    if (exponent < -5 || exponent >= significantDigits) {
        append(digits.substr(0, 1), digits.substr(1));
        return text + QLatin1Char('E') + QString::number(exponent);
    }
    if (exponent < 0) {
        append("0", std::string(std::size_t(-exponent - 1), '0') + digits);
        return text;
    }
    const std::size_t whole = std::size_t(exponent) + 1;
    if (digits.size() <= whole)
        append(digits + std::string(whole - digits.size(), '0'), "");
    else
        append(digits.substr(0, whole), digits.substr(whole));
    return text;
}

bool TryStrToFloat(const QString& text, double& value) {
    const QString point = QLocale().decimalPoint();
    QStringView rest = QStringView(text).trimmed();

    // Only digits, one sign, one separator and one exponent may come: hexadecimal numbers, "inf" and group separators,
    // which library conversions take, are no numbers here.
    std::string plain;
    if (!rest.isEmpty() && (rest.front() == u'+' || rest.front() == u'-')) {
        if (rest.front() == u'-')
            plain += '-';
        rest = rest.mid(1);
    }
    const auto takeDigits = [&rest, &plain] {
        int taken = 0;
        while (!rest.isEmpty() && rest.front() >= u'0' && rest.front() <= u'9') {
            plain += char(rest.front().unicode());
            rest = rest.mid(1);
            ++taken;
        }
        return taken;
    };
    int digits = takeDigits();
    if (rest.startsWith(point)) {
        plain += '.';
        rest = rest.mid(point.size());
        digits += takeDigits();
    }
    if (digits == 0)
        return false;
    if (!rest.isEmpty() && (rest.front() == u'e' || rest.front() == u'E')) {
        plain += 'e';
        rest = rest.mid(1);
        if (!rest.isEmpty() && (rest.front() == u'+' || rest.front() == u'-')) {
            plain += char(rest.front().unicode());
            rest = rest.mid(1);
        }
        if (takeDigits() == 0)
            return false;
    }
    if (!rest.isEmpty())
        return false;

    double parsed = 0;
    const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), parsed);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small is zero, too large is an error, but from_chars reports both alike.
        if (leadingExponent(plain) > 0)
            return false;
        parsed = plain.front() == '-' ? -0.0 : 0.0;
    } else if (result.ec != std::errc() || result.ptr != plain.data() + plain.size()) {
        return false;
    }
    value = parsed;
    return true;
}

double StrToFloat(const QString& text) {
    double value = 0;
    if (!TryStrToFloat(text, value))
        throw EConvertError('\'' + text.toStdString() + "' is not a valid floating point value");
    return value;
}

}  // namespace zk
