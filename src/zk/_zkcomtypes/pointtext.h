#pragma once

#include <zk/_zkxyz/records.h>
#include <zk/export.h>

#include <QString>

#include <span>
#include <type_traits>

namespace zk {

/// The text form of a point: the coordinates in the form of `FloatToStr` (decimal separator of the current locale),
/// joined by "/" without blanks: "1/2.5/-3".
ZKCOMTYPES_API QString xyztoStr(const TXYZ& P);

/// The point that a text holds. Blanks around the numbers are ignored, as is everything from a third "/" on. A missing
/// or malformed number raises `EConvertError`, whose message names the text and the bad piece.
ZKCOMTYPES_API TXYZ Strtoxyz(const QString& S);

/// The same for texts that may be no point: false, and `P` untouched, instead of an error.
ZKCOMTYPES_API bool TryStrtoxyz(const QString& S, TXYZ& P);

/// True if `Strtoxyz` takes the text. Never raises.
ZKCOMTYPES_API bool CheckStrtoxyz(const QString& S);

/// Splits a text at the occurrences of `Sep3` into `Parts`. Before that, the first character of the first `Sep1` and
/// then of the first `Sep2` becomes a blank (empty separators occur nowhere). Blanks right behind a separator are
/// dropped, all others kept. What follows is lost once every part is filled; parts that are not reached keep their
/// contents, all of them when the text is empty.
ZKCOMTYPES_API void Separate(const QString& S, const QString& Sep1, const QString& Sep2, const QString& Sep3,
                             std::span<QString> Parts);

/// Where trace texts go: nowhere.
inline void PrintLn(const QString&) {}

/// The same for a text that costs something to make: `makeText` is only called where traces go somewhere.
template <class MakeText>
requires std::is_invocable_r_v<QString, MakeText>
void PrintLn(const MakeText& /*makeText*/) {}

}  // namespace zk
