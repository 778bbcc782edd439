#include "rule.h"

#include <array>
#include <cstddef>

namespace ztcad {

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
#define ZTCAD_RULE(identifier, severity, since, sentence, message) \
  constexpr auto identifier = nameOf(#identifier);  // NOLINT(bugprone-macro-parentheses): a name
#include "rules.def"
#undef ZTCAD_RULE
}  // namespace names

constexpr RuleInfo rules[] = {
#define ZTCAD_RULE(identifier, severity, since, sentence, message) \
  {names::identifier.data(), Severity::severity, since, sentence, message},
#include "rules.def"
#undef ZTCAD_RULE
};

}  // namespace

const RuleInfo& infoOf(Rule rule) { return rules[static_cast<std::size_t>(rule)]; }

}  // namespace ztcad
