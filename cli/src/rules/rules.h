#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "../check/finding.h"

namespace cli {

/// A rule of one of the libraries, with its page.
struct RuleDescription {
  std::string name;
  Severity severity = Severity::Error;
  std::string since;
  std::string sentence;
  std::string_view page;  // Markdown; empty if the program was built without it
};

/// All rules, in the order of their names.
const std::vector<RuleDescription>& allRules();

/// Null if there is no rule of that name.
const RuleDescription* findRule(const std::string& name);

/// Throws `UsageError`, which names similar rules, if there is no rule of that name.
/// @param where what the name was given to, such as "--only"; empty: nothing is said about it
void requireRule(const std::string& name, const std::string& where);

/// Where the page of a rule is, relative to the documentation of the library.
std::string rulePageReference(const std::string& name);

}  // namespace cli
