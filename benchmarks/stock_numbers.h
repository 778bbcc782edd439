#pragma once

#include <cstdint>
#include <QString>
#include <QStringList>
#include <vector>

namespace benchmarks {

/// Numbers as text by Qt's own calls, both ways.

QString stockNumber(double value);
QString stockNumber(std::uint32_t value);

/// Numbers separated by ", " and ";", as `split` finds them.
template <typename Number, typename Convert>
std::vector<Number> stockNumbers(const QString& text, Convert&& convert) {
  std::vector<Number> numbers;
  for (const QString& piece : text.split(QLatin1Char(';'), Qt::SkipEmptyParts))
    for (const QString& part : piece.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
      bool converted = false;
      const Number number = convert(part, converted);
      if (converted) numbers.push_back(number);
    }
  return numbers;
}

std::vector<double> stockReals(const QString& text);
std::vector<std::uint32_t> stockIndices(const QString& text);

/// The text of a list, a triple on each line.
template <typename Number>
QString stockText(const std::vector<Number>& numbers) {
  QString text(QLatin1Char('\n'));
  for (std::size_t i = 0; i + 3 <= numbers.size(); i += 3) {
    text += stockNumber(numbers[i]) + QLatin1String(", ") + stockNumber(numbers[i + 1]) +
            QLatin1String(", ") + stockNumber(numbers[i + 2]) + QLatin1String(";\n");
  }
  return text;
}

}  // namespace benchmarks
