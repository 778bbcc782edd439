#include "command_line.h"

#include <ztCAD/ztCAD_c.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "failure.h"
#include "near_misses.h"
#include "worker/serve.h"

namespace cli {

namespace {

CLI::App& addCommand(CLI::App& app, const std::string& name, const std::string& description) {
  return *app.add_subcommand(name, description)->group("Commands");
}

const char* const exitCodes =
    "Exit code: 0 well; 1 what the command looked at is not well; 2 the command could not do its work.";

/// Prints the help. Beside an option is its value, and nothing else.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    label("SUBCOMMAND", "COMMAND");
    label("Positionals", "Arguments");
    column_width(32);
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    const bool hasValue = option->nonpositional() && option->get_type_size() != 0;
    return hasValue ? " " + option->get_type_name() : "";
  }
  std::string make_description(const CLI::App* app) const override {
    return asSentence(app->get_description()) + "\n\n";
  }
};

template <typename Value>
using Choices = std::vector<std::pair<std::string, Value>>;

const Choices<Severity> levels{
    {"error", Severity::Error}, {"warning", Severity::Warning}, {"note", Severity::Note}};

/// An option whose value is one of several words. Its type name lists them, separated by "|".
template <typename Value, typename Target>
void addChoice(CLI::App& command, const std::string& name, Target& target, const Choices<Value>& choices,
               const std::string& help) {
  std::string words;
  for (const auto& choice : choices)
    words += (words.empty() ? "" : "|") + choice.first;
  const auto choose = [&target, choices, name, words](const std::string& word) {
    const auto choice = std::find_if(choices.begin(), choices.end(),
                                     [&](const auto& candidate) { return candidate.first == word; });
    if (choice == choices.end()) throw CLI::ValidationError(name, "\"" + word + "\" is not one of " + words);
    target = choice->second;
  };
  command.add_option_function<std::string>(name, choose, help)
      ->type_name(words)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

template <typename Target>
void addNumber(CLI::App& command, const std::string& name, Target& target, std::int64_t least,
               std::int64_t greatest, const std::string& typeName, const std::string& help) {
  const auto take = [&target, name, least, greatest](const std::string& word) {
    std::int64_t number = 0;
    if (!CLI::detail::lexical_cast(word, number) || number < least || number > greatest)
      throw CLI::ValidationError(name, "\"" + word + "\" is no number from " + std::to_string(least) +
                                           " to " + std::to_string(greatest));
    target = Target(number);
  };
  command.add_option_function<std::string>(name, take, help)
      ->type_name(typeName)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

enum class Least { Zero, AboveZero };

/// A real number that is not negative.
template <typename Target>
void addReal(CLI::App& command, const std::string& name, Target& target, Least least,
             const std::string& typeName, const std::string& help) {
  const auto take = [&target, name, least](const std::string& word) {
    double number = 0;
    const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
    if (result.ec != std::errc() || result.ptr != word.data() + word.size() || !std::isfinite(number) ||
        number < 0 || (number == 0 && least == Least::AboveZero))
      throw CLI::ValidationError(
          name, "\"" + word + "\" is no number " + (least == Least::Zero ? "from 0" : "above 0"));
    target = number;
  };
  command.add_option_function<std::string>(name, take, help)
      ->type_name(typeName)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addText(CLI::App& command, const std::string& name, std::string& target, const std::string& typeName,
             const std::string& help) {
  command.add_option(name, target, help)
      ->type_name(typeName)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

/// An option that may be given several times. Each takes one value, also before positional arguments.
void addList(CLI::App& command, const std::string& name, std::vector<std::string>& target,
             const std::string& typeName, const std::string& help) {
  command.add_option(name, target, help)->type_name(typeName)->allow_extra_args(false)->delimiter(',');
}

void addFiles(CLI::App& command, const std::string& name, std::vector<std::string>& target,
              const std::string& help) {
  command.add_option(name, target, help)->required()->type_name("");
}

}  // namespace

std::string asSentence(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text.empty() || text.back() == '.' ? text : text + ".";
}

CommandLine::CommandLine() : m_app("check, describe, compare, convert and show geometry documents", "ztcad") {
  m_app.allow_windows_style_options(false);
  m_app.set_help_flag("-h,--help", "print this help");
  m_app.set_version_flag("--version", std::string("ztcad ") + ztCADVersion(), "print the version");
  m_app.require_subcommand(1);
  m_app.formatter(std::make_shared<HelpFormatter>());
  m_app.footer(
      std::string("'ztcad COMMAND --help' describes a command. \"-\" is standard input or output.\n") +
      exitCodes);
  addCheck();
  addInfo();
  addMass();
  addDiff();
  addConvert();
  addView();
  addFormat();
  addRules();
  m_app.add_subcommand(workerCommand)->group("")->callback([this] { m_command = WorkerOptions(); });
}

void CommandLine::addCheck() {
  CLI::App& command = addCommand(m_app, "check", "report what is wrong with documents, and what is lost");
  addFiles(command, "PATH", m_check.paths, "documents, or folders: all *.xml in them");
  addChoice<ReportFormat>(
      command, "--format", m_check.format,
      {{"text", ReportFormat::Text}, {"json", ReportFormat::Json}, {"sarif", ReportFormat::Sarif}},
      "form of the report (text)");
  addList(command, "--only", m_check.only, "RULE", "report findings of this rule only; may be repeated");
  addList(command, "--ignore", m_check.ignore, "RULE", "ignore findings of this rule; may be repeated");
  addChoice(command, "--level", m_check.lowestShown, levels, "lowest level shown (warning)");
  addChoice(command, "--fail-on", m_check.failOn, levels, "lowest level that makes the exit code 1 (error)");
  addText(command, "--baseline", m_check.baseline, "REPORT", "report only what an earlier JSON report lacks");
  addNumber(command, "--max", m_check.most, 0, INT64_MAX, "N", "show at most N findings of a document");
  addNumber(command, "--jobs", m_check.jobs, 1, 1024, "N", "check with N processes (one for each processor)");
  addNumber(command, "--timeout", m_check.timeLimit, 1, 1000000, "SECONDS",
            "give up a document that takes longer (300)");
  command.add_flag("--no-inspect", m_check.noInspect, "do not check geometry, references and mass data");
  command.callback([this] { m_command = m_check; });
}

void CommandLine::addInfo() {
  CLI::App& command = addCommand(m_app, "info", "say what documents hold");
  addFiles(command, "FILE", m_info.files, "documents");
  command.add_flag("--tree", m_info.tree, "list every element");
  addChoice<bool>(command, "--format", m_info.json, {{"text", false}, {"json", true}},
                  "form of the output (text)");
  command.callback([this] { m_command = m_info; });
}

void CommandLine::addFormat() {
  CLI::App& command = addCommand(m_app, "format", "print a document as the library saves it");
  addText(command, "FILE", m_format.file, "", "the document");
  command.get_option("FILE")->required();
  addText(command, "-o,--output", m_format.output, "OUT",
          "write to this file, which is replaced in one step");
  command.add_flag("--in-place", m_format.inPlace, "replace the document in one step");
  command.add_flag("--check", m_format.check, "write nothing; exit code 1 if the document would change");
  CLI::Option* const output = command.get_option("--output");
  CLI::Option* const inPlace = command.get_option("--in-place");
  CLI::Option* const check = command.get_option("--check");
  output->excludes(inPlace)->excludes(check);
  inPlace->excludes(check);
  command.callback([this] { m_command = m_format; });
}

void CommandLine::addDiff() {
  CLI::App& command = addCommand(m_app, "diff", "say what differs between two documents");
  addText(command, "A", m_diff.a, "", "a document");
  addText(command, "B", m_diff.b, "", "another document");
  command.get_option("A")->required();
  command.get_option("B")->required();
  addReal(command, "--tolerance", m_diff.tolerance.absolute, Least::Zero, "T",
          "numbers that differ by at most T are equal (0)");
  addReal(command, "--relative", m_diff.tolerance.relative, Least::Zero, "R",
          "so are numbers that differ by at most R times the greater one (0)");
  addChoice<bool>(command, "--format", m_diff.json, {{"text", false}, {"json", true}},
                  "form of the output (text)");
  command.callback([this] { m_command = m_diff; });
}

void CommandLine::addMass() {
  CLI::App& command = addCommand(m_app, "mass", "compare declared mass properties with computed ones");
  addText(command, "FILE", m_mass.file, "", "the document");
  command.get_option("FILE")->required();
  addReal(command, "--density", m_mass.density, Least::AboveZero, "D", "mass of a unit of volume");
  addText(command, "--write", m_mass.output, "OUT", "write the document with the computed data to this file");
  addChoice<bool>(command, "--format", m_mass.json, {{"text", false}, {"json", true}},
                  "form of the output (text)");
  command.callback([this] { m_command = m_mass; });
}

void CommandLine::addConvert() {
  CLI::App& command = addCommand(m_app, "convert", "convert between documents and mesh files");
  addText(command, "IN", m_convert.input, "", "a document or a mesh file");
  addText(command, "OUT", m_convert.output, "", "the file to write; its extension gives the format");
  command.get_option("IN")->required();
  command.get_option("OUT")->required();
  Choices<MeshFormat> formats;
  for (const MeshFormatName& name : meshFormats())
    formats.emplace_back(name.word, name.format);
  addChoice(command, "--from", m_convert.from, formats, "format of IN (by its extension)");
  addChoice(command, "--to", m_convert.to, formats, "format of OUT (by its extension)");
  addReal(command, "--scale", m_convert.scale, Least::AboveZero, "S", "multiply all lengths by S (1)");
  addText(command, "--name", m_convert.name, "NAME", "name of the elements that a mesh file becomes");
  addReal(command, "--density", m_convert.density, Least::AboveZero, "D",
          "give closed solids mass data: mass of a unit of volume");
  addReal(command, "--join", m_convert.join, Least::AboveZero, "T",
          "join vertices of a mesh file that are at most T apart (equal ones)");
  command.callback([this] { m_command = m_convert; });
}

void CommandLine::addRules() {
  CLI::App& command = addCommand(m_app, "rules", "list the rules, or print the page of one");
  addText(command, "RULE", m_rules.rule, "", "name of a rule");
  addChoice<bool>(command, "--format", m_rules.json, {{"text", false}, {"json", true}},
                  "form of the output (text)");
  command.callback([this] { m_command = m_rules; });
}

void CommandLine::addView() {
  CLI::App& command = addCommand(m_app, "view", "write a page that shows a document in any browser");
  addText(command, "FILE", m_view.file, "", "the document");
  command.get_option("FILE")->required();
  addText(command, "-o,--output", m_view.output, "OUT", "the page to write, one file that needs no network");
  command.get_option("--output")->required();
  command.callback([this] { m_command = m_view; });
}

Command CommandLine::parse(std::vector<std::string> arguments) {
  for (std::string& argument : arguments)  // the parser would split "[a,b]" into the words of a list
    if (!argument.empty() && argument.front() == '[' && argument.back() == ']') argument.insert(0, "./");
  std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the end
  try {
    m_app.parse(std::move(arguments));
    return m_command;
  } catch (const CLI::CallForHelp&) {
    return PrintedText{m_app.help()};
  } catch (const CLI::CallForVersion& version) {
    return PrintedText{std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    fail(error);
  }
}

std::string CommandLine::unknownCommand(const std::string& word) const {
  if (word.front() == '-') return "there is no option " + word;
  std::vector<std::string> names;
  for (const CLI::App* command : m_app.get_subcommands({}))
    if (!command->get_group().empty()) names.push_back(command->get_name());
  return "there is no command \"" + word + "\"" + suggestion(nearMisses(word, names));
}

void CommandLine::fail(const CLI::ParseError& error) const {
  const std::vector<CLI::App*> commands = m_app.get_subcommands();
  const std::string help =
      commands.empty() ? "'ztcad --help'" : "'ztcad " + commands.front()->get_name() + " --help'";
  const std::vector<std::string> remaining = m_app.remaining();
  std::string message = error.what();
  if (commands.empty())
    message = remaining.empty() ? "a command is missing" : unknownCommand(remaining.front());
  throw UsageError(message + "; see " + help);
}

}  // namespace cli
