#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace cli {

/// The version of the JSON forms, see docs/*.schema.json. It changes when a form changes in a way that breaks
/// its readers.
inline constexpr int reportSchema = 1;

/// The value on one line. Bytes that are not UTF-8, which file names may have, become U+FFFD.
template <typename Json>
std::string jsonText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// The first lines of each JSON form: schema and tool.
std::string jsonHead();
/// The same with the name of the list that follows.
std::string jsonBeginning(const char* list);

}  // namespace cli
