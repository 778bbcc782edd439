#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cli {

/// The manual page ztcad(1), for man.
std::string manualPage(const CLI::App& app);

/// A completion of commands, options, their values and the names of rules, for bash.
std::string bashCompletion(const CLI::App& app);

/// The commands that users call.
std::vector<const CLI::App*> commandsOf(const CLI::App& app);

/// The options of a command, without positional arguments.
std::vector<const CLI::Option*> optionsOf(const CLI::App& command);

/// "-o, --output", "--in-place"
std::string namesOf(const CLI::Option& option, const std::string& separator);

/// Whether the option takes a value.
bool takesValue(const CLI::Option& option);

}  // namespace cli
