#include "number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <QLocale>
#include <string_view>
#include <system_error>

namespace ztcad {

namespace {

// "-1.23457e-308" needs 13 characters, seven digits one more
using RealBuffer = std::array<char, 16>;
using IndexBuffer = std::array<char, 10>;

std::string_view writtenByQt(double value, RealBuffer& buffer) {
  const QString text = QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
  for (int i = 0; i < text.size(); ++i)
    buffer[i] = text[i].toLatin1();
  return {buffer.data(), static_cast<std::size_t>(text.size())};
}

// Where the seventh digit is a 5, the sixth may hang on a tie, which to_chars sends to the even neighbour.
bool isNearTie(double value, RealBuffer& buffer) {
  std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, 6);
  const std::size_t seventhDigit = value < 0 ? 8 : 7;
  return buffer[seventhDigit] == '5';
}

std::string_view written(double value, RealBuffer& buffer) {
  if (value == 0) return "0";
  if (!std::isfinite(value) || isNearTie(value, buffer)) return writtenByQt(value, buffer);
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 6);
  return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

std::string_view written(std::uint32_t value, IndexBuffer& buffer) {
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

void append(QString& out, std::string_view ascii) {
  out += QLatin1String(ascii.data(), static_cast<int>(ascii.size()));
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

bool convert(QStringView text, double& value) { return toReal(text, value); }
bool convert(QStringView text, std::uint32_t& value) { return toIndex(text, value); }

template <typename Visit>
void forEachPart(QStringView text, QChar separator, Visit visit) {
  for (qsizetype start = 0; start < text.size();) {
    const qsizetype found = text.indexOf(separator, start);
    const qsizetype end = found < 0 ? text.size() : found;
    if (end > start) visit(text.mid(start, end - start));
    start = end + 1;
  }
}

template <typename Number>
bool appendParts(QStringView list, std::vector<Number>& values) {
  bool allConverted = true;
  forEachPart(list, QLatin1Char(','), [&](QStringView part) {
    Number value{};
    const bool converted = convert(part, value);
    if (converted) values.push_back(value);
    allConverted = allConverted && converted;
  });
  return allConverted;
}

template <typename Number>
bool parseAnyList(QStringView text, std::vector<Number>& values) {
  useCLocale();
  if (!text.contains(QLatin1Char(';'))) return appendParts(text, values);
  const QString list = text.toString().remove(QLatin1Char(';'));
  return appendParts(QStringView(list), values);
}

template <typename Number>
bool parseAnyTriples(QStringView text, std::vector<Number>& values) {
  useCLocale();
  bool allWhole = true;
  forEachPart(text, QLatin1Char(';'), [&](QStringView piece) {
    if (!piece.contains(QLatin1Char(','))) return;
    const std::size_t before = values.size();
    const bool whole = appendParts(piece, values) && values.size() - before >= 3;
    values.resize(before + (whole ? 3 : 0));
    allWhole = allWhole && whole;
  });
  return allWhole;
}

}  // namespace

void appendReal(std::string& out, double value) {
  RealBuffer buffer;
  out += written(value, buffer);
}

void appendReal(QString& out, double value) {
  RealBuffer buffer;
  append(out, written(value, buffer));
}

void appendIndex(std::string& out, std::uint32_t value) {
  IndexBuffer buffer;
  out += written(value, buffer);
}

void appendIndex(QString& out, std::uint32_t value) {
  IndexBuffer buffer;
  append(out, written(value, buffer));
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

bool parseList(QStringView text, std::vector<double>& values) { return parseAnyList(text, values); }
bool parseList(QStringView text, std::vector<std::uint32_t>& values) { return parseAnyList(text, values); }

bool parseTriples(QStringView text, std::vector<double>& values) { return parseAnyTriples(text, values); }
bool parseTriples(QStringView text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

}  // namespace ztcad
