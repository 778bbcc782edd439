#pragma once

#include <cstdint>
#include <QString>
#include <string>
#include <vector>

#include "../text/element_text.h"
#include "whole_numbers.h"  // writeIndex

namespace ztcad {

/// Numbers as text, both ways. The reference is the installed Qt, to the last character: on the way out
/// `QString::arg(value, 0, 'g', -1, ' ')` and `QString::arg(value)`, on the way in `QString::toDouble` and
/// `QString::toUInt`. None of it depends on a locale.

/// Writes at most six significant digits: 0.5, 1e-07, 1.23457e+06, inf, nan; -0.0 as 0; an exact tie goes
/// away from 0.
/// @param out room for `longestNumber` characters
/// @return the end of what was written
char* writeReal(double value, char* out);
constexpr int longestNumber = 16;  // "-1.23457e-308" has 13

void appendReal(std::string& out, double value);
void appendReal(QString& out, double value);
void appendIndex(std::string& out, std::uint32_t value);
void appendIndex(QString& out, std::uint32_t value);

/// What converts; blanks around are allowed. False, with `value` left as it was, for text that is no number
/// and for a number that is out of range (for a real also one so small that it would become 0).
bool toReal(QStringView text, double& value);
bool toIndex(QStringView text, std::uint32_t& value);

/// What converts, else 0 (out of range included).
double realOrZero(QStringView text);
std::uint32_t indexOrZero(QStringView text);

/// Sets the process-wide default locale to C, unless it is C already. The parsers of lists of characters do so first and
/// leave it so (for lists of bytes their carrier does); a reader of single numbers that has to, calls it by itself.
void useCLocale();

/// Parses a list separated by commas into `values`, to which it appends. Every ";" is passed over, empty
/// parts are dropped. True only if every part converted; those that did are appended in any case.
bool parseList(QStringView text, std::vector<double>& values);
bool parseList(QStringView text, std::vector<std::uint32_t>& values);

/// `parseList` of a list that may hold one to `most` numbers.
/// @param values room for `most` numbers
/// @return how many there are; 0 when there are none or more, or when a part does not convert
int parseShortList(const ElementText& text, double* values, int most);

/// Parses pieces separated by ";", each a list of at least three numbers of which the first three are
/// appended to `values`. A piece without a comma is passed over. A piece that is too short or does not
/// convert adds nothing and makes the result false; the pieces around it are kept.
bool parseTriples(QStringView text, std::vector<double>& values);
bool parseTriples(QStringView text, std::vector<std::uint32_t>& values);
bool parseTriples(const ElementText& text, std::vector<double>& values);
bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values);

}  // namespace ztcad
