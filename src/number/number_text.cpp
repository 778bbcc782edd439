#include "number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <QLocale>
#include <string_view>
#include <system_error>

#include "six_digits.h"

namespace ztcad {

namespace {

// -------------------------------------------------------------------------------- writing

char* writeAsQt(double value, char* out) {
  const QString text = QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
  for (const QChar character : text)
    *out++ = character.toLatin1();
  return out;
}

// Where the seventh digit is a 5, the sixth may hang on a tie, which to_chars sends to the even neighbour.
bool isNearTie(double value, char* scratch) {
  std::to_chars(scratch, scratch + longestNumber, value, std::chars_format::scientific, 6);
  const std::size_t seventhDigit = value < 0 ? 8 : 7;
  return scratch[seventhDigit] == '5';
}

void append(QString& out, const char* from, const char* to) {
  out += QLatin1String(from, static_cast<int>(to - from));
}

// -------------------------------------------------------------------------------- reading

// Longer texts are rare and left to Qt.
using QuickText = std::array<char, 32>;

// Copies a text of plain digits, points, exponents and signs; nothing for any other text.
std::string_view plainText(QStringView text, QuickText& copy) {
  const auto size = static_cast<std::size_t>(text.size());
  if (size > copy.size()) return {};
  for (std::size_t i = 0; i < size; ++i) {
    const char16_t c = text[static_cast<qsizetype>(i)].unicode();
    const bool known =
        (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+' || c == u'e' || c == u'E';
    if (!known) return {};
    copy[i] = static_cast<char>(c);
  }
  return {copy.data(), size};
}

// What from_chars takes as a whole means the same to Qt; what it does not take, Qt may still know.
template <typename Number>
bool toNumberQuickly(QStringView text, Number& value) {
  QuickText copy;
  const std::string_view plain = plainText(text.trimmed(), copy);
  if (plain.empty()) return false;
  Number read{};
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), read);
  if (error != std::errc() || end != plain.data() + plain.size()) return false;
  value = read;
  return true;
}

}  // namespace

char* writeReal(double value, char* out) {
  if (char* const end = writeSixDigits(value, out)) return end;
  if (!std::isfinite(value) || isNearTie(value, out)) return writeAsQt(value, out);
  return std::to_chars(out, out + longestNumber, value, std::chars_format::general, 6).ptr;
}

void appendReal(std::string& out, double value) {
  char text[longestNumber];
  out.append(text, writeReal(value, text));
}

void appendReal(QString& out, double value) {
  char text[longestNumber];
  append(out, text, writeReal(value, text));
}

void appendIndex(std::string& out, std::uint32_t value) {
  char text[longestNumber];
  out.append(text, writeIndex(value, text));
}

void appendIndex(QString& out, std::uint32_t value) {
  char text[longestNumber];
  append(out, text, writeIndex(value, text));
}

bool toReal(QStringView text, double& value) {
  if (toNumberQuickly(text, value)) return true;
  bool converted = false;
  const double read = text.toString().toDouble(&converted);
  if (converted) value = read;
  return converted;
}

bool toIndex(QStringView text, std::uint32_t& value) {
  if (toNumberQuickly(text, value)) return true;
  bool converted = false;
  const std::uint32_t read = text.toString().toUInt(&converted);
  if (converted) value = read;
  return converted;
}

double realOrZero(QStringView text) {
  double value = 0;
  toReal(text, value);
  return value;
}

std::uint32_t indexOrZero(QStringView text) {
  std::uint32_t value = 0;
  toIndex(text, value);
  return value;
}

// Compared first: the default belongs to all threads of the host, and is written only where it has to change.
// Every C locale equals QLocale::c(), whatever its country; one with other number options does not.
void useCLocale() {
  if (QLocale() != QLocale::c()) QLocale::setDefault(QLocale::c());
}

}  // namespace ztcad
