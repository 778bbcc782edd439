#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cerrno>
#include <filesystem>

#include <shellapi.h>

#include "file_names.h"
#include "open_temporary_file.h"
#include "standard_streams.h"

namespace cli {

void prepareStandardStreams() {
  for (std::FILE* stream : {stdin, stdout, stderr})
    static_cast<void>(_setmode(_fileno(stream), _O_BINARY));
  SetConsoleOutputCP(CP_UTF8);
  // a crash ends the process and opens no window
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
}

std::vector<std::string> programArguments(int, char**) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; words && i < count; ++i)
    arguments.push_back(std::filesystem::path(words[i]).u8string());
  LocalFree(words);
  return arguments;
}

bool isTerminal(std::FILE* stream) {
  const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::FILE* openTemporaryFile(const std::string& folder, std::string& name) {
  std::array<wchar_t, MAX_PATH + 1> made{};
  if (GetTempFileNameW(pathOf(folder).c_str(), L"ztc", 0, made.data()) == 0) {
    errno = EACCES;
    return nullptr;
  }
  name = nameOf(std::filesystem::path(made.data()));
  return _wfopen(made.data(), L"wb");
}

}  // namespace cli
