#include "xml_outcome.h"

#include "../text/wide_utf8.h"
#include "xml_cursor.h"

namespace ztcad {

ParseOutcome failedParse(std::string_view text, const XmlError& error) {
  ParseOutcome outcome{false, error.isRefusal, QString(QLatin1String(error.message)), 1, 1, error.offset};
  std::int64_t line = 1;
  std::int64_t column = 1;
  const char* at = text.data();
  const char* const stop = at + error.offset;
  const char* const end = at + text.size();
  while (at < stop) {
    const Utf8Character character = utf8Character(at);
    at += character.length;
    const bool endsLine = character.code == '\n' || (character.code == '\r' && (at == end || *at != '\n'));
    const int units = character.code > 0xffff ? 2 : 1;
    column = endsLine ? 1 : column + units;
    line += endsLine ? 1 : 0;
  }
  outcome.line = placeNumber(line);
  outcome.column = placeNumber(column);
  return outcome;
}

}  // namespace ztcad
