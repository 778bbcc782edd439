#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// How much a finding matters, in ascending order.
enum class Severity { Note, Warning, Error };
inline constexpr int severityCount = 3;

inline std::string_view wordFor(Severity severity) {
  switch (severity) {
    case Severity::Error:
      return "error";
    case Severity::Warning:
      return "warning";
    case Severity::Note:
      return "note";
  }
  return "error";
}

/// A position in a document: line and column in characters from 1, offset in bytes from 0.
struct Place {
  std::int64_t line = 0;
  std::int64_t column = 0;
  std::int64_t offset = 0;
};

/// A finding of a library, as `ztCAD_Finding` describes it.
struct Finding {
  Severity severity = Severity::Error;
  std::string rule;
  std::string message;
  Place place;
  std::string path;
  std::optional<std::string> attribute;
  std::string kind;  // of the nearest element; empty if there is none
  std::optional<std::string> name;
  std::int64_t count = 1;
  std::vector<Place> places;  // the first places of a finding that occurs several times
};

/// What the library says about a file.
struct Review {
  std::string problem;  // why the file was not reviewed; empty if it was
  std::int32_t code = 0;
  bool fault = false;
  std::vector<Finding> findings;  // in the order of the text
};

}  // namespace cli
