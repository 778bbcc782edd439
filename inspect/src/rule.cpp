#include "rule.h"

#include <array>
#include <cstddef>

namespace ztcad::inspect {

namespace {

/// The name of a rule: its identifier with hyphens.
template <std::size_t Size>
constexpr std::array<char, Size> nameOf(const char (&identifier)[Size]) {
  std::array<char, Size> name{};
  for (std::size_t i = 0; i < Size; ++i)
    name[i] = identifier[i] == '_' ? '-' : identifier[i];
  return name;
}

namespace names {
#define ZTCAD_INSPECT_RULE(identifier, severity, since, sentence, message) \
  constexpr auto identifier = nameOf(#identifier);  // NOLINT(bugprone-macro-parentheses): a name
#include "rules.def"
#undef ZTCAD_INSPECT_RULE
}  // namespace names

namespace severities {
constexpr std::int32_t note = ztCAD_SeverityNote;
constexpr std::int32_t warning = ztCAD_SeverityWarning;
constexpr std::int32_t error = ztCAD_SeverityError;
}  // namespace severities

constexpr ztCAD_Rule rules[] = {
#define ZTCAD_INSPECT_RULE(identifier, severity, since, sentence, message) \
  {names::identifier.data(), severities::severity, since, sentence},
#include "rules.def"
#undef ZTCAD_INSPECT_RULE
};

constexpr const char* messages[] = {
#define ZTCAD_INSPECT_RULE(identifier, severity, since, sentence, message) message,
#include "rules.def"
#undef ZTCAD_INSPECT_RULE
};

}  // namespace

int ruleCount() { return static_cast<int>(std::size(rules)); }

const ztCAD_Rule& infoOf(Rule rule) { return rules[static_cast<std::size_t>(rule)]; }

const char* messageOf(Rule rule) { return messages[static_cast<std::size_t>(rule)]; }

}  // namespace ztcad::inspect
