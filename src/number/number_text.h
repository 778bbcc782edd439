#pragma once

#include <cstdint>
#include <QString>

#include "whole_numbers.h"  // writeIndex

namespace ztcad {

/// Conversion of single numbers to and from text. Nothing here depends on a locale.
///
/// Numbers are written as the installed Qt writes them, to the last character: `QString::arg(value, 0, 'g',
/// -1, ' ')` and `QString::arg(value)`. They are read as Qt 5.15 reads them (`QString::toDouble` and
/// `QString::toUInt`), whichever Qt is installed: other versions differ in whitespace and NUL characters.

/// Writes at most six significant digits: 0.5, 1e-07, 1.23457e+06, inf, nan. -0.0 is written as 0; exact ties
/// are rounded away from 0.
/// @param out room for `longestNumber` characters
/// @return the end of what was written
char* writeReal(double value, char* out);
constexpr int longestNumber = 16;  // "-1.23457e-308" has 13

void appendReal(QString& out, double value);
void appendIndex(QString& out, std::uint32_t value);

/// Converts one number; whitespace of every script around it is ignored. A real may have a fraction and an
/// exponent, or be "nan", "inf", "+inf" or "-inf" in any case; its signs may be U+2212. False, with `value`
/// unchanged, for text that is no number and for a number out of range (for a real also one so small that it
/// would become 0).
/// @{
[[nodiscard]] bool toReal(QStringView text, double& value);
[[nodiscard]] bool toIndex(QStringView text, std::uint32_t& value);
/// @}

/// The number, or 0 where `toReal` or `toIndex` would fail.
/// @{
double realOrZero(QStringView text);
std::uint32_t indexOrZero(QStringView text);
/// @}

/// Sets the process-wide default locale to C, unless it is C already. By contract the parsers of coordinates,
/// lists and radii leave it so: those in character_list.h call this, the XML reader calls it before it
/// returns bytes for numbers, and the reader of a radius calls it directly.
///
/// If memory runs out while Qt queries the system's locale, the default locale is not used again.
void useCLocale();

/// Makes Qt query the system's locale, so that no later call needs memory for that. Part of the load step.
void queryLocale();

}  // namespace ztcad
