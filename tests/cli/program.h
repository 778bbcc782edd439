#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// How a run of the program ended.
struct ProgramRun {
  int exitCode = -1;  // 128 and the signal's number if a signal ended it
  std::string output;
  std::string errors;
};

/// Where the program runs.
struct Setting {
  std::string input{};       // for standard input
  std::string folder{};      // in which it runs; empty: the current one
  std::string outputFile{};  // for standard output; empty: it is returned
};

/// Runs the built program, without a shell, and waits for its end. Throws if it cannot be started.
ProgramRun runProgram(const std::vector<std::string>& arguments, const Setting& setting = {});

/// The only document of a report of `check` or `info`.
inline nlohmann::json onlyDocument(const ProgramRun& run) {
  const nlohmann::json report = nlohmann::json::parse(run.output);
  return report.at("documents").size() == 1 ? report.at("documents").at(0) : nlohmann::json();
}
