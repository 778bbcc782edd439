#include "address_space.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <ztCAD/ztCAD.h>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "scratch_folder.h"

namespace exhaustion {

namespace {

/// Exit statuses of a process.
enum Status { Saved = 0, NotLoaded = 1, NotSaved = 2, Wrong = 3 };

std::string inputFile() { return scratchFolder() + "/large.xml"; }
std::string outputFile() { return scratchFolder() + "/saved.xml"; }

void writeDocument(int megabytes) {
  const std::streamoff size = std::streamoff{megabytes} << 20;
  std::ofstream file(inputFile(), std::ios::binary);
  file << "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n";
  for (int solid = 0; file.tellp() < size; ++solid) {
    file << "<solid name=\"S" << solid << "\" method=\"triangulation\"><vertices>\n";
    for (int i = 0; i < 5000; ++i)
      file << i << ".25, " << solid << ".5, -1;\n";
    file << "</vertices><faces>\n";
    for (int i = 0; i < 5000; ++i)
      file << i << ", 0, 1;\n";
    file << "</faces></solid>\n";
  }
  file << "</GMD>\n";
  if (!file.flush()) throw std::runtime_error("the document cannot be written");
}

/// A size of this process in bytes, from the system's table: "VmSize" or "VmPeak".
rlim_t memory(const std::string& name) {
  std::ifstream table("/proc/self/status");
  for (std::string line; std::getline(table, line);)
    if (line.compare(0, name.size(), name) == 0) return std::stoul(line.substr(name.size() + 1)) * 1024;
  throw std::runtime_error("the size of the process is unknown");
}

std::uintmax_t sizeOfOutput() {
  std::ifstream file(outputFile(), std::ios::binary | std::ios::ate);
  return file ? static_cast<std::uintmax_t>(file.tellg()) : 0;
}

Status loadAndSave() {
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* const document = ztCAD_loadDocument(inputFile().c_str(), &outcome);
  if (!document) return outcome.code != 0 ? NotLoaded : Wrong;
  if (ztCAD_saveDocument(document, outputFile().c_str(), &outcome)) return Saved;
  return outcome.code != 0 && sizeOfOutput() == 0 ? NotSaved : Wrong;
}

/// @param limit 0: none
/// @param peak  output: what the process needed; may be null
int statusUnder(rlim_t limit, rlim_t* peak) {
  int toParent[2];
  if (pipe(toParent) != 0) throw std::runtime_error("no pipe");
  const pid_t process = fork();
  if (process == 0) {
    const rlimit both = {limit, limit};
    if (limit != 0 && setrlimit(RLIMIT_AS, &both) != 0) _exit(Wrong);
    const Status status = loadAndSave();
    if (limit == 0) {
      const rlim_t needed = memory("VmPeak");
      if (write(toParent[1], &needed, sizeof needed) != sizeof needed) _exit(Wrong);
    }
    _exit(status);
  }
  close(toParent[1]);
  if (peak && read(toParent[0], peak, sizeof *peak) != sizeof *peak) *peak = 0;
  close(toParent[0]);
  int status = 0;
  waitpid(process, &status, 0);
  return status;
}

}  // namespace

bool runUnderLimits(int megabytes) {
  constexpr rlim_t sizes = 20;
  writeDocument(megabytes);
  rlim_t peak = 0;
  const rlim_t start = memory("VmSize");
  if (statusUnder(0, &peak) != 0 || peak <= start) throw std::runtime_error("the document does not load");
  const std::uintmax_t whole = sizeOfOutput();
  int counts[4] = {};
  bool good = true;
  for (rlim_t i = 1; i <= sizes; ++i) {
    std::remove(outputFile().c_str());
    const int status = statusUnder(start + (peak - start) * i / sizes, nullptr);
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : Wrong;
    const bool asPromised = code < Wrong && (code != Saved || sizeOfOutput() == whole);
    if (!asPromised)
      std::printf("limit %ju of %ju: ended with status %d\n", uintmax_t{i}, uintmax_t{sizes}, status);
    ++counts[code < Wrong ? code : Wrong];
    good = good && asPromised;
  }
  std::printf(
      "%d MB under %ju limits of the address space: %d not loaded, %d not saved, %d saved, %d wrong\n",
      megabytes, uintmax_t{sizes}, counts[NotLoaded], counts[NotSaved], counts[Saved], counts[Wrong]);
  return good && counts[NotLoaded] > 0 && counts[Saved] > 0;
}

}  // namespace exhaustion
