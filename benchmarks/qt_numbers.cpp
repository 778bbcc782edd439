#include "qt_numbers.h"

namespace benchmarks {

QString qtNumber(double value) {
  return QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
}
QString qtNumber(std::uint32_t value) { return QString(QLatin1String("%1")).arg(value); }

std::vector<double> qtReals(const QString& text) {
  return qtNumbers<double>(text, [](const QString& part, bool& ok) { return part.toDouble(&ok); });
}

std::vector<std::uint32_t> qtIndices(const QString& text) {
  return qtNumbers<std::uint32_t>(text, [](const QString& part, bool& ok) { return part.toUInt(&ok); });
}

}  // namespace benchmarks
