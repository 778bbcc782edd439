// Runs a fuzzer on stored inputs without a fuzzing engine, so that any compiler can build it.
//
//   replay_<name> <file or folder>...

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzzing.h"

namespace {

void replay(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  fuzzing::require(stream.is_open(), ("can open " + file.string()).c_str());
  std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  bytes.shrink_to_fit();  // lets a memory checker detect reads past the end
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    const std::filesystem::path path(arguments[i]);
    if (!std::filesystem::is_directory(path)) {
      replay(path);
      ++replayed;
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      std::printf("%s\n", entry.path().string().c_str());
      std::fflush(stdout);  // after a crash, the last line names the input
      replay(entry.path());
      ++replayed;
    }
  }
  std::printf("%d inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
}
