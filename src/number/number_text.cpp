#include "number_text.h"

#include <array>
#include <charconv>
#include <QLocale>
#include <string_view>
#include <system_error>

#include "six_digits.h"

namespace ztcad {

namespace {

// Slow path: infinities, nan and magnitudes that hardly any document contains.
char* writeAsQt(double value, char* out) {
  const QString text = QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
  for (const QChar character : text)
    *out++ = character.toLatin1();
  return out;
}

void append(QString& out, const char* from, const char* to) {
  out += QLatin1String(from, static_cast<int>(to - from));
}

// Longer texts are rare and left to Qt.
using ShortText = std::array<char, 32>;

// Copies a text of digits, points, exponents and signs; empty for any other text.
std::string_view plainText(QStringView text, ShortText& copy) {
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

// Fast path. A text that from_chars takes as a whole has the same value in Qt; Qt accepts more texts than
// that.
template <typename Number>
bool convertPlain(QStringView text, Number& value) {
  ShortText copy;
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
  char* const end = writeSixDigits(value, out);
  return end ? end : writeAsQt(value, out);
}

void appendReal(QString& out, double value) {
  char text[longestNumber];
  append(out, text, writeReal(value, text));
}

void appendIndex(QString& out, std::uint32_t value) {
  char text[longestNumber];
  append(out, text, writeIndex(value, text));
}

bool toReal(QStringView text, double& value) {
  if (convertPlain(text, value)) return true;
  bool converted = false;
  const double read = text.toString().toDouble(&converted);
  if (converted) value = read;
  return converted;
}

bool toIndex(QStringView text, std::uint32_t& value) {
  if (convertPlain(text, value)) return true;
  bool converted = false;
  const std::uint32_t read = text.toString().toUInt(&converted);
  if (converted) value = read;
  return converted;
}

double realOrZero(QStringView text) {
  double value = 0;
  return toReal(text, value) ? value : 0;
}

std::uint32_t indexOrZero(QStringView text) {
  std::uint32_t value = 0;
  return toIndex(text, value) ? value : 0;
}

// Compares first: the default locale is shared by all threads of the host, so it is written only where it
// must change. Every C locale equals QLocale::c(), whatever its country; one with other number options does
// not.
void useCLocale() {
  if (QLocale() != QLocale::c()) QLocale::setDefault(QLocale::c());
}

}  // namespace ztcad
