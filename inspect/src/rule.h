#pragma once

#include <ztCAD/ztCAD_c.h>
#include <cstdint>

namespace ztcad::inspect {

/// The rules that findings of this library belong to.
enum class Rule : std::uint16_t {
#define ZTCAD_INSPECT_RULE(identifier, severity, since, sentence, message) identifier,
#include "rules.def"
#undef ZTCAD_INSPECT_RULE
};

/// The number of rules.
int ruleCount();
/// What hosts see of a rule.
const ztCAD_Rule& infoOf(Rule rule);
/// Its message, with "{element}", "{1}", ...
const char* messageOf(Rule rule);

}  // namespace ztcad::inspect
