#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>

#include "differential/dice.h"
#include "host.h"
#include "random_seed.h"

// A process that dies in the middle of a save, at any moment.

namespace {

Document manyPoints(const std::string& name, int count) {
  Document document = newDocument();
  const ztCAD_Point* const point = pointNamed(name);
  for (int i = 0; i < count; ++i)
    addPointToDoc(point, document.get());
  return document;
}

/// Saves both in turns, without end.
[[noreturn]] void saveForever(ztCAD_GMDDocument* one, ztCAD_GMDDocument* other, const std::string& file) {
  while (true) {
    SaveGMDDocument(one, file);
    SaveGMDDocument(other, file);
  }
}

class KilledSave : public testing::Test {
 protected:
  const TemporaryFiles files;
  const std::string target = files.path("document.xml");
  const Document one = manyPoints("one", 3000);
  const Document other = manyPoints("other", 4000);

  int microsecondsOfASave() const {
    using namespace std::chrono;
    const auto before = steady_clock::now();
    SaveGMDDocument(one.get(), target);
    return 1 + static_cast<int>(duration_cast<microseconds>(steady_clock::now() - before).count());
  }

  /// Starts a process that saves, and kills it after so many microseconds.
  void killAfter(useconds_t microseconds) const {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) saveForever(other.get(), one.get(), target);
    usleep(microseconds);
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
  }

  /// Where the file system knows no files without a name, a killed save leaves its temporary file beside the target.
  void removeRemains() const {
    for (const std::string& name : files.names()) {
      if (name == "document.xml") continue;
      EXPECT_EQ(name.rfind("document.xml.", 0), 0U) << name;
      std::filesystem::remove(files.path(name));
    }
  }
};

TEST_F(KilledSave, LeavesOneOfTheTwoDocumentsWhole) {
  const std::string texts[] = {savedBytes(one.get()), savedBytes(other.get())};
  Dice dice(randomSeed());
  int changed = 0;
  double wait = microsecondsOfASave();
  SaveGMDDocument(one.get(), target);
  for (int round = 0; round < 300; ++round) {
    killAfter(static_cast<useconds_t>(dice.roll(1 + static_cast<int>(2 * wait))));
    const std::string found = bytesOf(target);
    ASSERT_TRUE(found == texts[0] || found == texts[1])
        << "round " << round << ": " << found.size() << " bytes";
    const bool isChanged = found == texts[1];
    changed += isChanged ? 1 : 0;
    // the kills come about the end of the first save, however busy the machine is and becomes
    constexpr double longest = 2e6;
    wait = std::min(longest, wait * (isChanged ? 0.9 : 1.1));
    removeRemains();
    if (isChanged) SaveGMDDocument(one.get(), target);
  }
  EXPECT_GT(changed, 10);
  EXPECT_LT(changed, 290);
}

TEST_F(KilledSave, IsMadeUpForByTheNext) {
  for (int round = 0; round < 20; ++round)
    killAfter(static_cast<useconds_t>(1000 * round));
  SaveGMDDocument(one.get(), target);  // with what the others left beside it
  EXPECT_EQ(bytesOf(target), savedBytes(one.get()));
}

}  // namespace
