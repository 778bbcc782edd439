#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <variant>
#include <vector>

#include "check/check.h"
#include "convert/convert.h"
#include "diff/diff.h"
#include "format/format.h"
#include "info/info.h"
#include "mass/mass.h"
#include "rules/print_rules.h"
#include "view/view.h"

namespace cli {

/// The program as a worker.
struct WorkerOptions {};

/// Only a text to print: help or version.
struct PrintedText {
  std::string text;
};

using Command = std::variant<CheckOptions, InfoOptions, MassOptions, DiffOptions, ConvertOptions,
                             FormatOptions, RulesOptions, ViewOptions, WorkerOptions, PrintedText>;

/// A description of a command or option, as a sentence.
std::string asSentence(std::string text);

/// The only description of commands and options. Help, manual page and completion are made from it.
class CommandLine {
 public:
  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  /// @param arguments without the name of the program. Throws `UsageError` if they are wrong
  Command parse(std::vector<std::string> arguments);

  const CLI::App& app() const { return m_app; }

 private:
  void addCheck();
  void addInfo();
  void addFormat();
  void addMass();
  void addDiff();
  void addConvert();
  void addRules();
  void addView();
  std::string unknownCommand(const std::string& word) const;
  [[noreturn]] void fail(const CLI::ParseError& error) const;

  CLI::App m_app;
  Command m_command = PrintedText();
  CheckOptions m_check;
  InfoOptions m_info;
  FormatOptions m_format;
  MassOptions m_mass;
  DiffOptions m_diff;
  ConvertOptions m_convert;
  RulesOptions m_rules;
  ViewOptions m_view;
};

}  // namespace cli
