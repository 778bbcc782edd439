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

// A process that is killed at an arbitrary moment of a save.

namespace {

Document manyPoints(const std::string& name, int count) {
  Document document = newDocument();
  const ztCAD_Point* const point = pointNamed(name);
  for (int i = 0; i < count; ++i)
    addPointToDoc(point, document.get());
  return document;
}

/// Saves both documents alternately, forever.
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

  int saveDurationInMicroseconds() const {
    using namespace std::chrono;
    const auto before = steady_clock::now();
    SaveGMDDocument(one.get(), target);
    return 1 + static_cast<int>(duration_cast<microseconds>(steady_clock::now() - before).count());
  }

  /// Starts a process that saves and kills it after the given time.
  void killAfter(useconds_t microseconds) const {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) saveForever(other.get(), one.get(), target);
    usleep(microseconds);
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
  }

  /// A save that is killed at the last moment, or that has no unnamed files, leaves its temporary file.
  void removeTemporaryFiles() const {
    for (const std::string& name : files.names()) {
      if (name == "document.xml") continue;
      EXPECT_EQ(name.rfind(".ztcad-", 0), 0U) << name;
      std::filesystem::remove(files.path(name));
    }
  }
};

TEST_F(KilledSave, LeavesTheOldOrTheNewDocumentComplete) {
  const std::string texts[] = {savedBytes(one.get()), savedBytes(other.get())};
  Dice dice(randomSeed());
  int changed = 0;
  double wait = saveDurationInMicroseconds();
  SaveGMDDocument(one.get(), target);
  for (int round = 0; round < 300; ++round) {
    killAfter(static_cast<useconds_t>(dice.roll(1 + static_cast<int>(2 * wait))));
    const std::string found = bytesOf(target);
    ASSERT_TRUE(found == texts[0] || found == texts[1])
        << "round " << round << ": " << found.size() << " bytes";
    const bool isChanged = found == texts[1];
    changed += isChanged ? 1 : 0;
    // adjusts the wait so that the kills fall around the end of the first save, whatever the load of the
    // machine
    constexpr double longestWait = 2e6;
    wait = std::min(longestWait, wait * (isChanged ? 0.9 : 1.1));
    removeTemporaryFiles();
    if (isChanged) SaveGMDDocument(one.get(), target);
  }
  EXPECT_GT(changed, 10);
  EXPECT_LT(changed, 290);
}

TEST_F(KilledSave, DoesNotHinderTheNextSave) {
  for (int round = 0; round < 20; ++round)
    killAfter(static_cast<useconds_t>(1000 * round));
  SaveGMDDocument(one.get(), target);  // temporary files of the killed saves may exist
  EXPECT_EQ(bytesOf(target), savedBytes(one.get()));
}

}  // namespace
