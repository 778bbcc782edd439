#pragma once

#include <cstdint>
#include <QString>
#include <QStringList>
#include <vector>

namespace benchmarks {

/// Conversion between numbers and text by Qt's own calls.

QString qtNumber(double value);
QString qtNumber(std::uint32_t value);

/// The numbers of a text, which `split` divides at ';' and ','. Tokens that do not convert are skipped.
template <typename Number, typename Convert>
std::vector<Number> qtNumbers(const QString& text, Convert&& convert) {
  std::vector<Number> numbers;
  for (const QString& piece : text.split(QLatin1Char(';'), Qt::SkipEmptyParts))
    for (const QString& part : piece.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
      bool converted = false;
      const Number number = convert(part, converted);
      if (converted) numbers.push_back(number);
    }
  return numbers;
}

std::vector<double> qtReals(const QString& text);
std::vector<std::uint32_t> qtIndices(const QString& text);

/// The text of a list, one triple per line.
template <typename Number>
QString qtText(const std::vector<Number>& numbers) {
  QString text(QLatin1Char('\n'));
  for (std::size_t i = 0; i + 3 <= numbers.size(); i += 3) {
    text += qtNumber(numbers[i]) + QLatin1String(", ") + qtNumber(numbers[i + 1]) + QLatin1String(", ") +
            qtNumber(numbers[i + 2]) + QLatin1String(";\n");
  }
  return text;
}

}  // namespace benchmarks
