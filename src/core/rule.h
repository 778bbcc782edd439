#pragma once

#include <cstdint>

namespace ztcad {

/// How much a finding matters; the numbers of `ztCAD_Severity`.
enum class Severity : std::uint8_t { note, warning, error };

/// The rules that findings belong to.
enum class Rule : std::uint16_t {
#define ZTCAD_RULE(identifier, severity, since, sentence, message) identifier,
#include "rules.def"
#undef ZTCAD_RULE
};

struct RuleInfo {
  const char* name;  ///< "missing-centre"
  Severity severity;
  const char* since;
  const char* sentence;
  const char* message;
};

const RuleInfo& infoOf(Rule rule);

namespace rule_numbers {
enum Number : int {
#define ZTCAD_RULE(identifier, severity, since, sentence, message) identifier,
#include "rules.def"
#undef ZTCAD_RULE
  end
};
}  // namespace rule_numbers
constexpr int ruleCount = rule_numbers::end;

}  // namespace ztcad
