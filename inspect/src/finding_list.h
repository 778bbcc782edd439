#pragma once

#include <ztCAD/inspect.h>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "rule.h"

namespace ztcad::inspect {

/// How many places a finding keeps.
constexpr std::size_t placesKept = 10;

/// The element that a finding is about; empty: a mesh given as arrays, or the document.
struct Subject {
  const ztCAD_Base* element = nullptr;
  std::string path;
};

/// A number in a message: few digits, the same on every system.
std::string numberText(double value);
std::string numberText(std::int64_t value);
/// Three numbers, separated by commas.
std::string tripleText(const double* values);
/// A text in quotes, shortened.
std::string quoted(const std::string& text);

/// Where in a list: indices, two for each edge.
struct FindingPlaces {
  int kind = ztCADInspect_PlaceNone;
  std::vector<std::int64_t> indices;
};

/// The findings before they are numbered: owned texts.
class FindingList {
 public:
  /// Adds a finding. Its severity is that of the rule, unless another is given.
  void add(Rule rule, const Subject& subject, const char* attribute,
           std::initializer_list<std::string> arguments, std::int64_t count = 1,
           FindingPlaces places = FindingPlaces(), std::optional<int> severity = {});
  /// Counts the finding at an index once more.
  void repeat(std::int64_t index) { ++m_findings[static_cast<std::size_t>(index)].count; }
  void append(const FindingList& more, const Subject& subject);

  std::int64_t count() const { return static_cast<std::int64_t>(m_findings.size()); }
  const ztCADInspect_Finding* at(std::int64_t index) const;

  /// Orders findings by a number for each, those of equal numbers as they were added.
  void sortBy(const std::vector<std::int64_t>& keys);

 private:
  struct Finding {
    Rule rule = {};
    int severity = 0;
    std::string message;
    const ztCAD_Base* element = nullptr;
    std::string path;
    const char* attribute = nullptr;
    int kind = 0;
    std::optional<std::string> name;
    std::int64_t count = 1;
    FindingPlaces places;
    std::vector<std::string> arguments;      // to say the same about another element
    mutable ztCADInspect_Finding seen = {};  // what hosts see
  };
  static Finding made(Rule rule, const Subject& subject, const char* attribute,
                      std::vector<std::string> arguments, std::int64_t count, FindingPlaces places,
                      int severity);

  std::vector<Finding> m_findings;
};

}  // namespace ztcad::inspect

/// What the C interface knows as a list of findings.
struct ztCADInspect_Findings {
  ztcad::inspect::FindingList list;
};
