#include "rules.h"

#include <ztCAD/inspect.h>

#include <algorithm>

#include "../failure.h"
#include "../near_misses.h"
#include "rule_pages.h"

namespace cli {

namespace {

Severity severityOf(const ztCAD_Rule& rule) {
  if (rule.severity == ztCAD_SeverityNote) return Severity::Note;
  return rule.severity == ztCAD_SeverityWarning ? Severity::Warning : Severity::Error;
}

std::vector<RuleDescription> readRules() {
  std::vector<RuleDescription> rules;
  const auto add = [&](const ztCAD_Rule& rule) {
    rules.push_back({rule.name, severityOf(rule), rule.since, rule.sentence, rulePage(rule.name)});
  };
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i)
    add(*ztCAD_ruleAt(i));
  for (std::int32_t i = 0; i < ztCADInspect_ruleCount(); ++i)
    add(*ztCADInspect_ruleAt(i));
  std::sort(rules.begin(), rules.end(),
            [](const RuleDescription& a, const RuleDescription& b) { return a.name < b.name; });
  return rules;
}

}  // namespace

const std::vector<RuleDescription>& allRules() {
  static const std::vector<RuleDescription> rules = readRules();
  return rules;
}

const RuleDescription* findRule(const std::string& name) {
  const std::vector<RuleDescription>& rules = allRules();
  const auto rule = std::find_if(rules.begin(), rules.end(),
                                 [&](const RuleDescription& candidate) { return candidate.name == name; });
  return rule == rules.end() ? nullptr : &*rule;
}

void requireRule(const std::string& name, const std::string& where) {
  if (findRule(name)) return;
  std::vector<std::string> names;
  for (const RuleDescription& rule : allRules())
    names.push_back(rule.name);
  throw UsageError((where.empty() ? "" : where + ": ") + "there is no rule \"" + name + "\"" +
                   suggestion(nearMisses(name, names)) + "; 'ztcad rules' lists all rules");
}

std::string rulePageReference(const std::string& name) { return "docs/rules/" + name + ".md#" + name; }

}  // namespace cli
