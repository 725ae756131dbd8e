#pragma once

#include <zk/export.h>

#include <QString>

namespace zk {

/// A number in general form: at most 15 significant digits, no trailing zeros; fixed notation for 0 and for magnitudes
/// from 1e-5 up to below 1e15, otherwise mantissa, "E" and an exponent without plus sign or padding ("1E20",
/// "-2.5E-7"). The decimal separator is that of the current locale (`QLocale()`); there are no group separators.
/// Not-a-number is "NAN", the infinities are "INF" and "-INF".
ZKHOST_API QString FloatToStr(double value);

/// The number that `text` holds, in fixed or exponent notation with the current locale's decimal separator. Blanks
/// around it are ignored; anything else besides the number, an empty text or a number beyond the range of double raises
/// `EConvertError`, whose message names the text.
ZKHOST_API double StrToFloat(const QString& text);

/// The same without the error: false, and `value` unchanged, where `StrToFloat` would raise.
ZKHOST_API bool TryStrToFloat(const QString& text, double& value);

}  // namespace zk
