// Memory that runs out, in every exported function: each allocation of a call is refused in turn, alone and
// with all that follow it, each time in a process of its own; in the first call of a function in a process,
// and in a later one. The call must return; what was there before must be unchanged, or the call complete;
// and the next call must succeed.
//
//   exhaustion [--all] [function...]   --all: every allocation; else a sample of those after the 100th
//   exhaustion --limits [megabytes]    a document of this size, loaded and saved in too little address space
//   exhaustion --at <n> once|from-there-on cold|warm <row>   one call in this process, for a debugger

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <QtGlobal>
#include <stdexcept>
#include <thread>

#include "address_space.h"
#include "random_seed.h"
#include "refusals.h"
#include "scratch_folder.h"

namespace {

using namespace exhaustion;

std::vector<Row> allRows() {
  std::vector<Row> all;
  for (const std::vector<Row>& rows : {documentRows(), elementRows(), elementArrayRows(), contentRows(),
                                       fieldRows(), recordRows(), libraryRows(), reviewRows()})
    all.insert(all.end(), rows.begin(), rows.end());
  return all;
}

/// Compares the rows with the list of exported functions.
bool everyFunctionHasARow(const std::vector<Row>& rows) {
  std::ifstream list(ZTCAD_TEST_EXPORTED_FUNCTIONS);
  std::vector<std::string> exported;
  for (std::string function; std::getline(list, function);)
    exported.push_back(function);
  bool complete = !exported.empty();
  for (const std::string& function : exported) {
    if (std::none_of(rows.begin(), rows.end(), [&](const Row& row) { return row.function == function; })) {
      std::printf("no row for %s\n", function.c_str());
      complete = false;
    }
  }
  for (const Row& row : rows) {
    if (std::count(exported.begin(), exported.end(), row.function) == 0) {
      std::printf("a row for %s, which is not exported\n", row.function);
      complete = false;
    }
  }
  return complete;
}

/// Rows in which Qt does not survive every refusal, and how many of them at most. SECURITY.md lists the
/// calls. A row that survives all of them fails, too: it must be removed here and there.
struct Known {
  const char* row;
  Temperature temperature;
  long faults;
};

// The first message of a thread: Qt's data of the thread, one allocation with Qt 5 and two with Qt 6, each
// refused alone and with all that follow it.
constexpr long inTheFirstMessage = QT_VERSION < QT_VERSION_CHECK(6, 0, 0) ? 2 : 4;

const Known known[] = {
    {"ztCAD_report, to Qt's warning output", Temperature::Cold, inTheFirstMessage},
    {"crtGMDDocumentFromFile, not well-formed", Temperature::Cold, inTheFirstMessage},
    {"crtGMDDocumentFromFile, another root", Temperature::Cold, inTheFirstMessage},
};

bool isAsKnown(const Row& row, Temperature temperature, const Tally& tally) {
  const auto found = std::find_if(std::begin(known), std::end(known), [&](const Known& entry) {
    return entry.row == nameOf(row) && entry.temperature == temperature;
  });
  const long faults = tally.ended + tally.wrong;
  return found == std::end(known) ? faults == 0 : faults > 0 && faults <= found->faults;
}

/// Sums over all processes.
struct Totals {
  std::atomic<long> calls{0};
  std::atomic<long> allocations{0};
  std::atomic<long> refusals{0};
  std::atomic<long> ended{0};
  std::atomic<long> wrong{0};
  std::atomic<long> unexpected{0};  // rows that are not as known
};

struct Run {
  Extent extent = Extent::Sample;
  unsigned seed = 0;
  Totals* totals = nullptr;
};

void runRow(const Row& row, Temperature temperature, const Run& run) {
  const Tally tally = refuseEach(row, temperature, run.extent, run.seed);
  run.totals->calls += 1;
  run.totals->allocations += tally.allocations;
  run.totals->refusals += tally.refusals;
  run.totals->ended += tally.ended;
  run.totals->wrong += tally.wrong;
  std::printf("%-72s %s %7ld %7ld %6ld %6ld\n", nameOf(row).c_str(), nameOf(temperature), tally.allocations,
              tally.refusals, tally.ended, tally.wrong);
  if (!tally.firstFault.empty()) std::printf("    %s\n", tally.firstFault.c_str());
  if (!isAsKnown(row, temperature, tally)) {
    std::printf("    not as known\n");
    run.totals->unexpected += 1;
  }
  std::fflush(stdout);
}

template <typename Work>
pid_t startProcess(Work work) {
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process != 0) return process;
  int status = 0;
  try {
    work();
  } catch (const std::exception& exception) {
    std::printf("%s\n", exception.what());
    std::fflush(stdout);
    status = 1;
  }
  _exit(status);
}

bool succeeds(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Each row and temperature has a process of its own, in which no other row has called the library.
void runRows(const std::vector<Row>& rows, std::size_t first, std::size_t step, const Run& run) {
  bool completed = true;
  for (std::size_t i = first; i < rows.size(); i += step)
    for (const Temperature temperature : {Temperature::Cold, Temperature::Warm})
      if (!succeeds(startProcess([&] { runRow(rows[i], temperature, run); }))) {
        std::printf("%s, %s: not completed\n", nameOf(rows[i]).c_str(), nameOf(temperature));
        completed = false;
      }
  if (!completed) throw std::runtime_error("rows are not completed");
}

bool runAll(const std::vector<Row>& rows, Extent extent) {
  Run run;
  run.extent = extent;
  run.seed = static_cast<unsigned>(randomSeed());
  void* const shared =
      mmap(nullptr, sizeof(Totals), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::runtime_error("no shared memory");
  run.totals = new (shared) Totals;
  std::printf("%-72s %s %7s %7s %6s %6s\n", "", "    ", "allocs", "refused", "ended", "wrong");
  std::fflush(stdout);
  const std::size_t workers = std::max(1U, std::thread::hardware_concurrency());
  std::vector<pid_t> processes;
  for (std::size_t worker = 0; worker < workers; ++worker)
    processes.push_back(startProcess([&] { runRows(rows, worker, workers, run); }));
  bool completed = true;
  for (const pid_t process : processes)
    completed = succeeds(process) && completed;
  const Totals& totals = *run.totals;
  std::printf("%ld rows, %ld allocations, %ld refusals: %ld ended, %ld wrong; %ld rows not as known\n",
              totals.calls.load(), totals.allocations.load(), totals.refusals.load(), totals.ended.load(),
              totals.wrong.load(), totals.unexpected.load());
  return completed && totals.refusals > 0 && totals.unexpected == 0;
}

int runOne(const std::vector<Row>& rows, const std::vector<std::string>& arguments) {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [&](const Row& candidate) { return nameOf(candidate) == arguments.at(4); });
  if (row == rows.end()) throw std::runtime_error("no row " + arguments[4]);
  using refused_allocations::Mode;
  refuseOne(*row, arguments[3] == "cold" ? Temperature::Cold : Temperature::Warm, std::stol(arguments[1]),
            arguments[2] == "once" ? Mode::Once : Mode::FromThereOn);
  return EXIT_SUCCESS;
}

int run(std::vector<std::string> arguments) {
  if (!arguments.empty() && arguments[0] == "--limits")
    return runUnderLimits(arguments.size() > 1 ? std::stoi(arguments[1]) : 70) ? EXIT_SUCCESS : EXIT_FAILURE;
  std::vector<Row> rows = allRows();
  if (!arguments.empty() && arguments[0] == "--at") return runOne(rows, arguments);
  const bool complete = everyFunctionHasARow(rows);
  const bool all = !arguments.empty() && arguments[0] == "--all";
  if (all) arguments.erase(arguments.begin());
  if (!arguments.empty())
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [&](const Row& row) {
                                return std::count(arguments.begin(), arguments.end(), row.function) == 0;
                              }),
               rows.end());
  return runAll(rows, all ? Extent::All : Extent::Sample) && complete ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  std::string folder = (std::filesystem::temp_directory_path() / "ztCAD_exhaustion_XXXXXX").string();
  if (!mkdtemp(folder.data())) return EXIT_FAILURE;
  scratchFolder() = folder;
  int status = EXIT_FAILURE;
  try {
    status = run({argv + 1, argv + argc});
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "exhaustion: %s\n", exception.what());
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return status;
}
