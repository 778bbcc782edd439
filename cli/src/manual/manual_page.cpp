#include <ztCAD/ztCAD_c.h>

#include "../command_line.h"
#include "manual.h"

namespace cli {

namespace {

/// Text for man: hyphens that can be copied, and no line that is a request.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '-')
      result += "\\-";
    else if (c == '\\')
      result += "\\e";
    else
      result += c;
  }
  return !result.empty() && (result.front() == '.' || result.front() == '\'') ? "\\&" + result : result;
}

std::string sentence(const std::string& text) { return escaped(asSentence(text)) + "\n"; }

std::string usageOf(const CLI::App& command) {
  std::string usage = "ztcad " + command.get_name() + " [OPTIONS]";
  for (const CLI::Option* option :
       command.get_options([](const CLI::Option* o) { return o->get_positional(); })) {
    std::string name = option->get_name(true, false);
    if (option->get_expected_max() >= CLI::detail::expected_max_vector_size) name += "...";
    usage += option->get_required() ? " " + name : " [" + name + "]";
  }
  return usage;
}

std::string entryOf(const CLI::Option& option) {
  std::string entry = ".TP\n\\fB" + escaped(namesOf(option, ", ")) + "\\fR";
  if (takesValue(option)) entry += " \\fI" + escaped(option.get_type_name()) + "\\fR";
  return entry + "\n" + sentence(option.get_description());
}

std::string sectionOf(const CLI::App& command) {
  std::string section = ".SS " + escaped(usageOf(command)) + "\n" + sentence(command.get_description());
  for (const CLI::Option* option :
       command.get_options([](const CLI::Option* o) { return o->get_positional(); }))
    section +=
        ".TP\n\\fI" + escaped(option->get_name(true, false)) + "\\fR\n" + sentence(option->get_description());
  for (const CLI::Option* option : optionsOf(command))
    section += entryOf(*option);
  return section;
}

const char* const ending = R"man(.SH EXIT STATUS
.TP
.B 0
Well.
.TP
.B 1
The command did its work, and what it looked at is not well: a finding of the level of \fB\-\-fail\-on\fR,
a document that \fBformat \-\-check\fR would change, documents that differ, a document with errors.
.TP
.B 2
The command could not do its work, or not all of it: wrong arguments, a file that cannot be read or written,
a document that ends its worker process or takes too long.
.PP
Over several files the highest code counts.
.SH ENVIRONMENT
.TP
.B NO_COLOR
If set and not empty, there are no colours on terminals.
.TP
.B TMPDIR
The folder into which standard input is copied while it is read.
.SH EXAMPLES
.TP
.B ztcad check models
Check all documents in a folder.
.TP
.B ztcad check \-\-format json models > earlier.json
Keep a report.
.TP
.B ztcad check \-\-baseline earlier.json models
Report what is new since then.
.TP
.B ztcad diff earlier.xml later.xml \-\-tolerance 1e\-6
Say what differs.
.TP
.B ztcad convert part.stl part.xml \-\-density 7.85e\-6
Make a document of a mesh, with mass data.
.TP
.B ztcad rules missing\-centre
Explain a rule.
)man";

}  // namespace

std::string manualPage(const CLI::App& app) {
  std::string page = std::string(".TH ZTCAD 1 \"\" \"ztCAD ") + ztCADVersion() + "\" \"User Commands\"\n";
  page += ".SH NAME\nztcad \\- check, describe, compare and convert geometry documents\n.SH SYNOPSIS\n.nf\n";
  for (const CLI::App* command : commandsOf(app))
    page += "\\fB" + escaped(usageOf(*command)) + "\\fR\n";
  page += ".fi\n.SH DESCRIPTION\n" + sentence(app.get_description());
  page +=
      "Results go to standard output, everything else to standard error.\n"
      "The name \"\\-\" is standard input, or standard output where a file is written.\n";
  for (const CLI::Option* option : optionsOf(app))
    page += entryOf(*option);
  page += ".SH COMMANDS\n";
  for (const CLI::App* command : commandsOf(app))
    page += sectionOf(*command);
  return page + ending;
}

}  // namespace cli
