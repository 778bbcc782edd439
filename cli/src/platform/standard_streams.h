#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace cli {

/// Prepares the standard streams: bytes pass unchanged, and a reader that leaves is an error of the write,
/// not the end of the process. Called first.
void prepareStandardStreams();

/// The arguments of the program without its name; UTF-8 on Windows, bytes elsewhere.
std::vector<std::string> programArguments(int argc, char** argv);

/// Whether the stream is a terminal that interprets colours and positions. On Windows this switches them on.
bool isTerminal(std::FILE* stream);

}  // namespace cli
