#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <optional>
#include <string>

#include "failing_calls.h"
#include "written_files.h"

// Failures of the system while a file is written.

namespace {

/// The parameter: whether the file system has files without a name.
class FailingSystem : public testing::TestWithParam<bool> {
 protected:
  FailingSystem() {
    putBytes(target, "earlier");
    if (!GetParam()) m_noUnnamedFiles.emplace();
  }

  void expectUntouched() const {
    EXPECT_EQ(bytesOf(target), "earlier");
    EXPECT_EQ(files.names(), Names{"document.xml"});
  }

  /// Changes whenever the file is replaced, and only then.
  ino_t inode() const {
    struct stat status = {};
    EXPECT_EQ(stat(target.c_str(), &status), 0);
    return status.st_ino;
  }

  TemporaryFiles files;
  const std::string target = files.path("document.xml");

 private:
  std::optional<NoUnnamedFiles> m_noUnnamedFiles;
};

TEST_P(FailingSystem, AFailureToReachTheDiskLeavesTheEarlierFile) {
  for (const char* const function : {"fsync", "close"}) {
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
      const Interference interference(function, error);
      EXPECT_FALSE(write(target, "x")) << function << error;
      EXPECT_TRUE(interference.happened());
      expectUntouched();
    }
  }
}

TEST_P(FailingSystem, ATemporaryFileThatIsRefusedForLackOfResourcesIsAFailure) {
  for (const int error : {ENOSPC, EDQUOT, EIO, ENOMEM, EMFILE, ENFILE, ENAMETOOLONG}) {
    const Interference interference("openat", error);
    EXPECT_FALSE(write(target, "x")) << error;
    EXPECT_TRUE(interference.happened());
    expectUntouched();
  }
}

TEST_P(FailingSystem, ATemporaryFileThatIsRefusedForLackOfRightsIsDoneWithout) {
  for (const int error : {EACCES, EPERM, EROFS}) {
    putBytes(target, "earlier and longer");
    const ino_t before = inode();
    const Interference interference("openat", error);
    EXPECT_TRUE(write(target, "x")) << error;
    EXPECT_EQ(bytesOf(target), "x");
    EXPECT_EQ(inode(), before);
    EXPECT_EQ(files.names(), Names{"document.xml"});
    const Interference again("openat", error);
    EXPECT_FALSE(write(files.path("new.xml"), "x")) << error;
    EXPECT_EQ(files.names(), Names{"document.xml"});
  }
}

TEST_P(FailingSystem, ARenamingThatFailsLeavesTheEarlierFile) {
  for (const int error : {ENOSPC, EDQUOT, EIO, ENOMEM}) {
    const Interference interference("renameat", error);
    EXPECT_FALSE(write(target, "x")) << error;
    EXPECT_TRUE(interference.happened());
    expectUntouched();
  }
}

TEST_P(FailingSystem, ANewFileThatFailsLeavesNothing) {
  for (const char* const function : {"openat", "fsync", "close", "renameat"}) {
    const Interference interference(function, EIO);
    EXPECT_FALSE(write(files.path("new.xml"), "x")) << function;
    EXPECT_TRUE(interference.happened()) << function;
    expectUntouched();
  }
}

TEST_P(FailingSystem, ANameThatIsRefusedIsAFailure) {
  if (!GetParam()) return;  // the file has its name from the beginning
  for (const int error : {ENOSPC, EDQUOT, EIO, ENOMEM}) {
    const Interference interference("linkat", error);
    EXPECT_FALSE(write(target, "x")) << error;
    EXPECT_TRUE(interference.happened());
    expectUntouched();
  }
}

TEST_P(FailingSystem, AMountPointIsWrittenDirectly) {
  const ino_t before = inode();
  const Interference interference("renameat", EBUSY);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(inode(), before);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_P(FailingSystem, AnInterruptedCallIsRepeated) {
  for (const char* const function : {"open", "openat", "fsync", "close"}) {
    const Interference interference(function, EINTR);
    EXPECT_TRUE(write(target, function)) << function;
    EXPECT_EQ(bytesOf(target), function);
  }
}

TEST_P(FailingSystem, ATemporaryNameThatExistsIsNotUsed) {
  const Interference interference(GetParam() ? "linkat" : "openat", EEXIST);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_TRUE(interference.happened());
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

// The evidence for writing directly is examined again on the open file.
TEST_P(FailingSystem, AFileThatLosesItsSecondLinkIsReplaced) {
  const std::string other = files.path("other.xml");
  ASSERT_EQ(link(target.c_str(), other.c_str()), 0);
  const ino_t before = inode();
  const Interference interference("open", [&] {
    EXPECT_EQ(unlink(other.c_str()), 0);
    return 0;
  });
  EXPECT_TRUE(write(target, "x"));
  EXPECT_TRUE(interference.happened());
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_NE(inode(), before);
}

// Another process replaces the target after it was opened: what was opened has no name any more.
TEST_P(FailingSystem, AFileThatLosesItsNameIsNotWritten) {
  const std::string other = files.put("other.xml", "of another process");
  const int earlier = open(target.c_str(), O_RDONLY);
  const Interference refusal("openat", EACCES);
  const Interference replacement("fstat", [&] { return rename(other.c_str(), target.c_str()); });
  EXPECT_TRUE(write(target, "x"));
  EXPECT_TRUE(refusal.happened());
  EXPECT_TRUE(replacement.happened());
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(bytesOf("/proc/self/fd/" + std::to_string(earlier)), "earlier");
  close(earlier);
}

TEST_P(FailingSystem, AnOwnerThatCannotBeKeptMeansWritingDirectly) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can create a file of another user";
  ASSERT_EQ(chown(target.c_str(), 1234, 5678), 0);
  const ino_t before = inode();
  const Interference refusal("fchown", EPERM);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(inode(), before);
  EXPECT_EQ(bytesOf(target), "x");
  const Interference fault("fchown", EIO);
  EXPECT_FALSE(write(target, "y"));
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

INSTANTIATE_TEST_SUITE_P(FileSystems, FailingSystem, testing::Bool(), [](const auto& row) {
  return row.param ? "WithUnnamedFiles" : "WithoutUnnamedFiles";
});

}  // namespace
