/// Prints the manual page or the bash completion of the program, made from the description of its commands.
/// The build runs this; it is not installed.

#include <cstring>
#include <iostream>

#include "../command_line.h"
#include "manual.h"

int main(int argc, char** argv) {
  const cli::CommandLine commandLine;
  const char* const wanted = argc == 2 ? argv[1] : "";
  if (std::strcmp(wanted, "page") == 0)
    std::cout << cli::manualPage(commandLine.app());
  else if (std::strcmp(wanted, "completion") == 0)
    std::cout << cli::bashCompletion(commandLine.app());
  else
    std::cerr << "usage: ztcad_manual page|completion\n";
  return std::cout.flush() && *wanted ? 0 : 2;
}
