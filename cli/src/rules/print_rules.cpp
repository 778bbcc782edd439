#include "print_rules.h"

#include <algorithm>

#include "../output.h"
#include "../report/json_text.h"
#include "rules.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

ordered_json toJson(const RuleDescription& rule) {
  ordered_json object{{"name", rule.name},
                      {"severity", wordFor(rule.severity)},
                      {"since", rule.since},
                      {"sentence", rule.sentence}};
  if (!rule.page.empty()) object["page"] = rule.page;
  return object;
}

void printJson(const std::vector<RuleDescription>& rules, Output& output) {
  output << jsonBeginning("rules");
  const char* separator = "\n    ";
  for (const RuleDescription& rule : rules) {
    output << separator << jsonText(toJson(rule));
    separator = ",\n    ";
  }
  output << "\n  ]\n}\n";
}

void printTable(const std::vector<RuleDescription>& rules, Output& output) {
  std::size_t width = 0;
  for (const RuleDescription& rule : rules)
    width = std::max(width, rule.name.size());
  for (const RuleDescription& rule : rules) {
    const std::string severity(wordFor(rule.severity));
    output << rule.name << std::string(width + 2 - rule.name.size(), ' ') << severity
           << std::string(9 - severity.size(), ' ') << rule.sentence << "\n";
  }
}

void printPage(const RuleDescription& rule, Output& output) {
  if (rule.page.empty())
    output << "# " << rule.name << "\n\n"
           << wordFor(rule.severity) << ", since " << rule.since << ". " << rule.sentence << "\n";
  else
    output << rule.page;
}

}  // namespace

ExitCode printRules(const RulesOptions& options) {
  Output output;
  if (!options.rule.empty()) requireRule(options.rule, "");
  const RuleDescription* const one = findRule(options.rule);
  const std::vector<RuleDescription> rules = one ? std::vector<RuleDescription>{*one} : allRules();
  if (options.json)
    printJson(rules, output);
  else if (one)
    printPage(*one, output);
  else
    printTable(rules, output);
  output.flush();
  return ExitCode::Good;
}

}  // namespace cli
