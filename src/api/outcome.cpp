#include "outcome.h"

#include <algorithm>

#include "../text/narrow_text.h"
#include "guard.h"

namespace ztcad {

void report(ztCAD_Outcome* outcome, std::int32_t code, std::string_view message) noexcept {
  if (!outcome) return;
  *outcome = {};
  outcome->code = code;
  cutInto(outcome->message, ztCAD_MessageSize, message);
}

void report(ztCAD_Outcome* outcome, const LoadOutcome& load) {
  report(outcome, load.code, toNarrow(load.message));
  if (!outcome) return;
  outcome->fault = load.fault;
  outcome->line = load.line;
  outcome->column = load.column;
}

void reportNoMemory(ztCAD_Outcome* outcome) noexcept { report(outcome, ztCAD_ResultNotParsed, noMemory); }

void cutInto(char* buffer, std::int32_t size, std::string_view text) noexcept {
  if (!buffer || size <= 0) return;
  std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
  const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (length > 0 && length < text.size() && isInside(text[length]))
    --length;
  buffer[text.copy(buffer, length)] = '\0';
}

std::string_view countedText(const char* text, std::int64_t size) {
  if (!text || size < 0) return textOf(text);
  return {text, static_cast<std::size_t>(size)};
}

}  // namespace ztcad
