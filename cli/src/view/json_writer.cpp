#include "json_writer.h"

#include <algorithm>
#include <cmath>

#include "../number_text.h"
#include "../report/json_text.h"

namespace cli {

namespace {

bool isPlain(char character) {
  return character >= ' ' && character <= '~' && character != '"' && character != '\\' && character != '<';
}

/// In JSON, these characters occur inside strings only.
void escapeForPage(std::string& json) {
  const auto replaceAll = [&](std::string_view what, std::string_view with) {
    for (std::size_t at = json.find(what); at != std::string::npos; at = json.find(what, at + with.size()))
      json.replace(at, what.size(), with);
  };
  replaceAll("<", "\\u003c");
  replaceAll("\xe2\x80\xa8", "\\u2028");
  replaceAll("\xe2\x80\xa9", "\\u2029");
}

}  // namespace

void JsonWriter::string(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), isPlain)) {
    json(text);
    return;
  }
  raw("\"");
  raw(text);
  raw("\"");
}

void JsonWriter::number(double value) { raw(std::isfinite(value) ? numberText(value) : "null"); }

void JsonWriter::integer(std::int64_t value) { raw(std::to_string(value)); }

void JsonWriter::json(const nlohmann::ordered_json& value) {
  std::string text = jsonText(value);
  escapeForPage(text);
  raw(text);
}

}  // namespace cli
