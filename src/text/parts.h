#pragma once

#include <QStringView>
#include <vector>

namespace ztcad {

/// Calls `visit` with each part between separators; empty parts are dropped.
template <typename Visit>
void forEachPart(QStringView text, QChar separator, Visit&& visit) {
  for (qsizetype start = 0; start < text.size();) {
    const qsizetype found = text.indexOf(separator, start);
    const qsizetype end = found < 0 ? text.size() : found;
    if (end > start) visit(text.mid(start, end - start));
    start = end + 1;
  }
}

/// The parts between commas; empty parts are dropped.
/// @param text must stay valid as long as the parts
inline std::vector<QStringView> commaParts(QStringView text) {
  std::vector<QStringView> parts;
  forEachPart(text, QLatin1Char(','), [&parts](QStringView part) { parts.push_back(part); });
  return parts;
}

}  // namespace ztcad
