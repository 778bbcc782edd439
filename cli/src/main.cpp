#include <exception>
#include <variant>

#include "command_line.h"
#include "failure.h"
#include "output.h"
#include "platform/standard_streams.h"
#include "worker/serve.h"

namespace {

using cli::ExitCode;

struct Runner {
  ExitCode operator()(const cli::CheckOptions& options) const { return cli::check(options); }
  ExitCode operator()(const cli::InfoOptions& options) const { return cli::printInfo(options); }
  ExitCode operator()(const cli::FormatOptions& options) const { return cli::format(options); }
  ExitCode operator()(const cli::MassOptions& options) const { return cli::printMass(options); }
  ExitCode operator()(const cli::ConvertOptions& options) const { return cli::convert(options); }
  ExitCode operator()(const cli::DiffOptions& options) const { return cli::diff(options); }
  ExitCode operator()(const cli::ViewOptions& options) const { return cli::view(options); }
  ExitCode operator()(const cli::RulesOptions& options) const { return cli::printRules(options); }
  ExitCode operator()(const cli::WorkerOptions&) const { return cli::serve(); }
  ExitCode operator()(const cli::PrintedText& printed) const {
    cli::Output output;
    output << printed.text;
    output.flush();
    return ExitCode::Good;
  }
};

ExitCode run(int argc, char** argv) {
  try {
    cli::CommandLine commandLine;
    return std::visit(Runner(), commandLine.parse(cli::programArguments(argc, argv)));
  } catch (const std::bad_alloc&) {
    cli::printError("memory ran out");
  } catch (const std::exception& error) {
    cli::printError(error.what());
  }
  return ExitCode::Failed;
}

}  // namespace

int main(int argc, char** argv) {
  cli::prepareStandardStreams();
  return static_cast<int>(run(argc, argv));
}
