#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>

#include "../convert/output_file.h"

namespace cli {

/// Writes JSON into a script element of a page, value by value: a document may have millions of elements.
///
/// What a page would take for markup or, as U+2028, for the end of a line is escaped. Bytes that are not
/// UTF-8 become U+FFFD.
class JsonWriter {
 public:
  explicit JsonWriter(OutputFile& file) : m_file(file) {}

  /// Text of JSON without any text of a document: names of members, brackets, commas.
  void raw(std::string_view text) { m_file.write(text); }
  void string(std::string_view text);
  /// Null where JSON has no such number.
  void number(double value);
  void integer(std::int64_t value);
  void json(const nlohmann::ordered_json& value);

  /// "name": [...], with one value for each entry of a range, as the function writes it.
  template <typename Range, typename Write>
  void column(const char* name, const Range& range, const Write& write) {
    raw("\"");
    raw(name);
    raw("\":[");
    const char* separator = "";
    for (const auto& entry : range) {
      raw(separator);
      write(entry);
      separator = ",";
    }
    raw("]");
  }

 private:
  OutputFile& m_file;
};

}  // namespace cli
