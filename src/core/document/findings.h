#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../../xml/text_places.h"
#include "../review.h"

namespace ztcad {

/// A finding of a finished load, for hosts.
struct Finding {
  Rule rule = {};
  Severity severity = {};
  std::string message;
  TextPlace place;
  std::string path;
  std::optional<std::string> attribute;
  const KindName* kind = nullptr;  // null: none
  std::optional<std::string> name;
  std::int64_t count = 0;
  std::vector<TextPlace> places;  // of a finding that may occur several times
};

/// What a load found.
struct Findings {
  std::vector<Finding> kept;                 // in the order of the text
  std::array<std::int64_t, 3> omitted = {};  // by severity
};

/// Finds the places and paths of what a review collected, and cuts the list to its limit.
/// @param bytes the source of `text`; positions in `review` are addresses in either of them
Findings findingsOf(const Review& review, std::string_view bytes, const XmlText& text);

/// The only finding about a text that was not looked at.
Findings soleFinding(std::int64_t limit, Rule rule, const QString& argument);

}  // namespace ztcad
