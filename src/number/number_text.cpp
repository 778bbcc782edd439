#include "number_text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <limits>
#include <QLocale>
#include <string>
#include <string_view>
#include <system_error>

#include "../text/wide_utf8.h"
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

QStringView trimmed(QStringView text) {
  qsizetype first = 0;
  qsizetype last = text.size();
  while (first < last && isSpace(text[first].unicode()))
    ++first;
  while (last > first && isSpace(text[last - 1].unicode()))
    --last;
  return text.mid(first, last - first);
}

constexpr char16_t minusSign = 0x2212;

// Copies the visible ASCII characters and minus signs of which numbers consist; false if there are others.
bool copyPlain(QStringView text, char* out) {
  for (const QChar character : text) {
    const char16_t c = character.unicode();
    if ((c <= u' ' || c > u'~') && c != minusSign) return false;
    *out++ = c == minusSign ? '-' : static_cast<char>(c);
  }
  return true;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A sign may be "+" too, which from_chars does not take; one sign only.
std::string_view withoutPlus(std::string_view text) {
  const bool isSigned = text.size() > 1 && text[0] == '+' && (isDigit(text[1]) || text[1] == '.');
  return isSigned ? text.substr(1) : text;
}

template <typename Number>
bool convertWhole(std::string_view text, Number& value) {
  Number read{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}

bool convert(std::string_view text, std::uint32_t& value) { return convertWhole(withoutPlus(text), value); }

bool equalsWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char a, char b) { return (a | 0x20) == b; });
}

bool convertInfinity(std::string_view text, double& value) {
  const bool isNegative = text[0] == '-';
  if (!equalsWord(text.substr(isNegative || text[0] == '+' ? 1 : 0), "inf")) return false;
  constexpr double infinity = std::numeric_limits<double>::infinity();
  value = isNegative ? -infinity : infinity;
  return true;
}

bool convert(std::string_view text, double& value) {
  if (text.empty()) return false;
  const char last = text.back();
  if (isDigit(last) || last == '.') return convertWhole(withoutPlus(text), value);
  if (!equalsWord(text, "nan")) return convertInfinity(text, value);
  value = std::numeric_limits<double>::quiet_NaN();
  return true;
}

using ShortText = std::array<char, 32>;

template <typename Number>
bool convert(QStringView given, Number& value) {
  const QStringView text = trimmed(given);
  const auto size = static_cast<std::size_t>(text.size());
  ShortText shortText;
  std::string longText;
  if (size > shortText.size()) longText.resize(size);
  char* const plain = size > shortText.size() ? longText.data() : shortText.data();
  return copyPlain(text, plain) && convert(std::string_view(plain, size), value);
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

bool toReal(QStringView text, double& value) { return convert(text, value); }

bool toIndex(QStringView text, std::uint32_t& value) { return convert(text, value); }

double realOrZero(QStringView text) {
  double value = 0;
  return toReal(text, value) ? value : 0;
}

std::uint32_t indexOrZero(QStringView text) {
  std::uint32_t value = 0;
  return toIndex(text, value) ? value : 0;
}

namespace {

std::atomic<bool> localeFailed{false};

// When the default locale is first used, Qt queries the system under a mutex. If memory runs out there, the
// mutex stays locked, and every later use would hang: there must be none.
template <typename Use>
void withLocale(Use use) {
  if (localeFailed) return;
  try {
    use();
  } catch (...) {
    localeFailed = true;
    throw;
  }
}

}  // namespace

void queryLocale() {
  withLocale([] { QLocale(); });
}

// Compares first: the default locale is shared by all threads of the host, so it is written only where it
// must change. Every C locale equals QLocale::c(), whatever its country; one with other number options does
// not.
void useCLocale() {
  withLocale([] {
    if (QLocale() != QLocale::c()) QLocale::setDefault(QLocale::c());
  });
}

}  // namespace ztcad
