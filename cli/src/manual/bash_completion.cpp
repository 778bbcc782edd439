#include <algorithm>

#include "../rules/rules.h"
#include "manual.h"

namespace cli {

namespace {

std::string ruleNames() {
  std::string names;
  for (const RuleDescription& rule : allRules())
    names += (names.empty() ? "" : " ") + rule.name;
  return names;
}

/// The words that an option takes; empty if it takes others.
std::string valuesOf(const CLI::Option& option) {
  std::string type = option.get_type_name();
  if (type == "RULE") return "$rules";
  if (type.find('|') == std::string::npos) return "";
  std::replace(type.begin(), type.end(), '|', ' ');
  return type;
}

std::string allOptions(const CLI::App& command) {
  std::string names;
  for (const CLI::Option* option : optionsOf(command))
    names += (names.empty() ? "" : " ") + namesOf(*option, " ");
  return names;
}

/// A case for each option with a value: its words, or none, for which bash completes file names.
std::string casesOf(const CLI::App& command) {
  std::string cases;
  for (const CLI::Option* option : optionsOf(command)) {
    if (!takesValue(*option)) continue;
    for (const std::string& name : option->get_lnames())
      cases += "    '" + command.get_name() + " --" + name + "') words=\"" + valuesOf(*option) + "\" ;;\n";
    for (const std::string& name : option->get_snames())
      cases += "    '" + command.get_name() + " -" + name + "') words=\"" + valuesOf(*option) + "\" ;;\n";
  }
  return cases;
}

/// Words that start with "-" are options; positional arguments are files, or names of rules.
std::string lastCaseOf(const CLI::App& command) {
  const bool takesRule = command.get_option_no_throw("RULE") != nullptr;
  return "    '" + command.get_name() + " '*) if [[ $word == -* ]]; then words=\"" + allOptions(command) +
         "\"; else words=" + (takesRule ? "$rules" : "") + "; fi ;;\n";
}

}  // namespace

std::string bashCompletion(const CLI::App& app) {
  std::string names;
  std::string cases;
  for (const CLI::App* command : commandsOf(app)) {
    names += command->get_name() + " ";
    cases += casesOf(*command) + lastCaseOf(*command);
  }
  return R"bash(# bash completion of ztcad. Where no word fits, bash completes file names.
_ztcad() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
  local rules=")bash" +
         ruleNames() + R"bash("
  # "--option=value" comes as three words
  if [[ $word == = ]]; then
    word=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  if ((COMP_CWORD == 1)); then
    words=")bash" +
         names + allOptions(app) + R"bash("
  else
    case "${COMP_WORDS[1]} $previous" in
)bash" + cases +
         R"bash(    esac
  fi
  COMPREPLY=()
  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o bashdefault -o default -F _ztcad ztcad
)bash";
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::string namesOf(const CLI::Option& option, const std::string& separator) {
  std::string names;
  for (const std::string& name : option.get_snames())
    names += (names.empty() ? "" : separator) + "-" + name;
  for (const std::string& name : option.get_lnames())
    names += (names.empty() ? "" : separator) + "--" + name;
  return names;
}

bool takesValue(const CLI::Option& option) { return !option.get_type_name().empty(); }

}  // namespace cli
