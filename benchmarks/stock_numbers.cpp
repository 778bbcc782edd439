#include "stock_numbers.h"

namespace benchmarks {

QString stockNumber(double value) {
  return QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
}
QString stockNumber(std::uint32_t value) { return QString(QLatin1String("%1")).arg(value); }

std::vector<double> stockReals(const QString& text) {
  return stockNumbers<double>(text, [](const QString& part, bool& ok) { return part.toDouble(&ok); });
}

std::vector<std::uint32_t> stockIndices(const QString& text) {
  return stockNumbers<std::uint32_t>(text, [](const QString& part, bool& ok) { return part.toUInt(&ok); });
}

}  // namespace benchmarks
