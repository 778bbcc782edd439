#include "refusals.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>
#include <stdexcept>

namespace exhaustion {

namespace {

using refused_allocations::Mode;

constexpr Mode modes[] = {Mode::Once, Mode::FromThereOn};
constexpr unsigned secondsOfACall = 5;

const char* nameOf(Mode mode) { return mode == Mode::Once ? "once" : "from-there-on"; }

/// What a process reports to the one that started it.
struct Message {
  bool isComplete;
  long allocations;
  std::size_t size;
  char text[1 << 22];

  void set(const std::string& given) {
    size = std::min(given.size(), sizeof text);
    std::memcpy(text, given.data(), size);
  }
  std::string get() const { return {text, size}; }
};

Message& sharedMessage() {
  static auto* const message = static_cast<Message*>(
      mmap(nullptr, sizeof(Message), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  if (message == MAP_FAILED) throw std::runtime_error("no shared memory");
  return *message;
}

/// Runs `work` in a process of its own.
/// @return whether it came to its end
template <typename Work>
bool inProcess(Work work) {
  Message& message = sharedMessage();
  message.isComplete = false;
  message.size = 0;
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    alarm(secondsOfACall);  // a process that hangs ends too
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    work(message);
    message.isComplete = true;
    _exit(0);
  }
  int status = 0;
  waitpid(process, &status, 0);
  return message.isComplete;
}

/// The state before the call and after one that succeeds.
struct Expected {
  std::string before;
  std::string after;
  long allocations = 0;
};

Report call(const Trial& trial, long nth, Mode mode, long& allocations) {
  refused_allocations::start(nth, mode);
  const Report report = trial.call();
  allocations = refused_allocations::stop();
  return report;
}

Expected expectedOf(const Trial& trial) {
  Expected expected;
  const auto run = [&trial](bool withCall) {
    const bool returned = inProcess([&](Message& message) {
      if (trial.begin) trial.begin();
      if (withCall) call(trial, 0, Mode::Once, message.allocations);
      message.set(trial.state());
      if (trial.end) trial.end();
    });
    if (!returned) throw std::runtime_error("the call ends the process although no memory is refused");
    return sharedMessage().get();
  };
  expected.before = run(false);
  expected.after = run(true);
  expected.allocations = sharedMessage().allocations;
  return expected;
}

/// What is wrong with a call of which an allocation was refused; empty if nothing.
std::string faultOf(const Trial& trial, Report report, const Expected& expected) {
  const std::string state = trial.state();
  if (report == Report::Success && state != expected.after) return "success reported, but not complete";
  if (report == Report::Failure && state != expected.before) return "failure reported, but a change is left";
  if (state == expected.after && report != Report::Failure) return {};
  if (state != expected.before) return "half of a change is left";
  long ignored = 0;
  if (call(trial, 0, Mode::Once, ignored) == Report::Failure) return "the next call fails too";
  return trial.state() == expected.after ? "" : "the next call does something else";
}

std::vector<long> chosen(long allocations, Extent extent, unsigned seed) {
  constexpr long first = 100;
  constexpr std::size_t others = 50;
  std::vector<long> all(static_cast<std::size_t>(allocations));
  std::iota(all.begin(), all.end(), 1);
  if (extent == Extent::All || allocations <= first) return all;
  std::vector<long> sample(all.begin(), all.begin() + first);
  std::mt19937 engine(seed);
  std::sample(all.begin() + first, all.end(), std::back_inserter(sample), others, engine);
  return sample;
}

Trial prepared(const Row& row, Temperature temperature) {
  if (temperature == Temperature::Warm) {
    const Trial earlier = row.prepare();
    if (earlier.begin) earlier.begin();
    earlier.call();
    earlier.state();
    if (earlier.end) earlier.end();
  }
  return row.prepare();
}

}  // namespace

const char* nameOf(Temperature temperature) { return temperature == Temperature::Cold ? "cold" : "warm"; }

std::string nameOf(const Row& row) {
  return *row.variant ? std::string(row.function) + ", " + row.variant : row.function;
}

Tally refuseEach(const Row& row, Temperature temperature, Extent extent, unsigned seed) {
  const Trial trial = prepared(row, temperature);
  const Expected expected = expectedOf(trial);
  Tally tally;
  tally.allocations = expected.allocations;
  for (const long nth : chosen(expected.allocations, extent, seed)) {
    for (const Mode mode : modes) {
      ++tally.refusals;
      const bool returned = inProcess([&](Message& message) {
        if (trial.begin) trial.begin();
        const Report report = call(trial, nth, mode, message.allocations);
        message.set(faultOf(trial, report, expected));
        if (trial.end) trial.end();
      });
      const std::string fault = returned ? sharedMessage().get() : "the process ends";
      tally.ended += returned ? 0 : 1;
      tally.wrong += returned && !fault.empty() ? 1 : 0;
      if (tally.firstFault.empty() && !fault.empty())
        tally.firstFault = fault + ": --at " + std::to_string(nth) + ' ' + nameOf(mode) + ' ' +
                           nameOf(temperature) + " '" + nameOf(row) + "'";
    }
  }
  return tally;
}

void refuseOne(const Row& row, Temperature temperature, long nth, Mode mode) {
  const Trial trial = prepared(row, temperature);
  if (trial.begin) trial.begin();
  long allocations = 0;
  const Report report = call(trial, nth, mode, allocations);
  const char* const reported[] = {"success", "failure", "nothing"};
  std::printf("reported: %s; allocations: %ld\n%s\n", reported[static_cast<int>(report)], allocations,
              trial.state().c_str());
}

}  // namespace exhaustion
