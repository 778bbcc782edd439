#include "name_correction.h"

#include <QRegExp>

#include "../text/narrow_text.h"

namespace ztcad {

namespace {

// QRegExp, because its \d and \w match the digits and letters of every script (within U+FFFF: it sees UTF-16
// units)
QString corrected(QString text) {
  if (text.contains(QRegExp(QLatin1String("^\\d")))) text.prepend(QLatin1Char('_'));
  return text.replace(QRegExp(QLatin1String("([^\\d\\w]|_)+")), QLatin1String("_"));
}

}  // namespace

std::string correctName(const std::string& name, const std::string& fallback) {
  const std::string& used = name.empty() ? fallback : name;
  if (used.empty()) return "_";
  return toNarrow(corrected(fromNarrow(used)), narrowEncodingOf(used));
}

}  // namespace ztcad
