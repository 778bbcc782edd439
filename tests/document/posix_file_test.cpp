#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <chrono>
#include <csignal>
#include <fstream>
#include <optional>
#include <QFileDevice>
#include <string>
#include <thread>

#include "posix_conditions.h"
#include "written_files.h"

// Links, permissions, devices, full disks: how files are written and read on POSIX systems.

using ztcad::ReadOutcome;

namespace {

mode_t permissionsOf(const std::string& fileName) {
  struct stat status = {};
  EXPECT_EQ(stat(fileName.c_str(), &status), 0) << fileName;
  return status.st_mode & 07777;
}

ino_t inodeOf(const std::string& fileName) {
  struct stat status = {};
  EXPECT_EQ(stat(fileName.c_str(), &status), 0) << fileName;
  return status.st_ino;
}

mode_t typeOf(const std::string& fileName) {
  struct stat status = {};
  EXPECT_EQ(lstat(fileName.c_str(), &status), 0) << fileName;
  return status.st_mode & S_IFMT;
}

std::string linkTarget(const std::string& link) {
  std::string target(4096, '\0');
  const ssize_t size = readlink(link.c_str(), target.data(), target.size());
  target.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return target;
}

class PosixFiles : public testing::Test {
 protected:
  TemporaryFiles files;
  const std::string target = files.path("document.xml");
};

TEST_F(PosixFiles, ANewFileHasDefaultPermissions) {
  const mode_t mask = umask(027);
  files.put("plain", "");
  EXPECT_TRUE(write(target, "x"));
  umask(mask);
  EXPECT_EQ(permissionsOf(target), permissionsOf(files.path("plain")));
  EXPECT_EQ(permissionsOf(target), 0640u);
}

TEST_F(PosixFiles, PermissionsOfTheEarlierFileAreKept) {
  for (const mode_t permissions : {0600u, 0640u, 0644u, 0666u, 0755u}) {
    putBytes(target, "earlier");
    ASSERT_EQ(chmod(target.c_str(), permissions), 0);
    EXPECT_TRUE(write(target, "x"));
    EXPECT_EQ(permissionsOf(target), permissions);
    EXPECT_EQ(bytesOf(target), "x");
  }
}

TEST_F(PosixFiles, AnOpenReaderReadsTheEarlierFileToItsEnd) {
  putBytes(target, "earlier");
  std::ifstream reader(target, std::ios::binary);
  EXPECT_TRUE(write(target, "x"));
  std::string seen;
  EXPECT_TRUE(std::getline(reader, seen));
  EXPECT_EQ(seen, "earlier");
}

TEST_F(PosixFiles, SymbolicLinksAreFollowedAndKept) {
  const TemporaryFiles elsewhere;
  const std::string file = elsewhere.put("file.xml", "earlier");
  const std::string chain = files.path("chain");
  ASSERT_EQ(symlink(file.c_str(), target.c_str()), 0);
  ASSERT_EQ(symlink("document.xml", chain.c_str()), 0);
  for (const std::string& name : {target, chain}) {
    EXPECT_TRUE(write(name, "by " + name));
    EXPECT_EQ(bytesOf(file), "by " + name);
  }
  EXPECT_EQ(linkTarget(target), file);
  EXPECT_EQ(linkTarget(chain), "document.xml");
  EXPECT_EQ(elsewhere.names(), Names{"file.xml"});
  EXPECT_EQ(files.names(), (Names{"chain", "document.xml"}));
}

TEST_F(PosixFiles, ADanglingLinkCreatesItsTarget) {
  ASSERT_EQ(symlink("made.xml", target.c_str()), 0);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(linkTarget(target), "made.xml");
  EXPECT_EQ(bytesOf(files.path("made.xml")), "x");
}

TEST_F(PosixFiles, HardLinksAreKept) {
  putBytes(target, "earlier and longer");
  const std::string other = files.path("other.xml");
  ASSERT_EQ(link(target.c_str(), other.c_str()), 0);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(other), "x");
  EXPECT_EQ(inodeOf(other), inodeOf(target));
  EXPECT_EQ(files.names(), (Names{"document.xml", "other.xml"}));
}

/// Opens a pipe for reading without waiting for a writer.
int openPipe(const std::string& fileName) {
  const int pipe = open(fileName.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_GE(pipe, 0);
  EXPECT_EQ(fcntl(pipe, F_SETFL, 0), 0);
  return pipe;
}

TEST_F(PosixFiles, APipeIsWrittenToAndNotReplaced) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  std::string received;
  const int pipe = openPipe(target);
  constexpr std::size_t size = 100000;  // more than a pipe holds
  std::thread reader([&] {
    char bytes[1000];
    while (received.size() < size) {
      const ssize_t count = ::read(pipe, bytes, sizeof bytes);
      if (count > 0)
        received.append(bytes, std::size_t(count));
      else
        std::this_thread::yield();  // the writer has not opened the pipe, or has not written yet
    }
  });
  EXPECT_TRUE(write(target, std::string(size, 'x')));
  reader.join();
  close(pipe);
  EXPECT_EQ(received, std::string(size, 'x'));
  EXPECT_EQ(typeOf(target), static_cast<mode_t>(S_IFIFO));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(PosixFiles, APipeWithoutAReaderFailsAtOnce) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  EXPECT_FALSE(write(target, "x"));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(PosixFiles, APipeWhoseReaderLeavesFailsWithoutASignal) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  const int pipe = openPipe(target);
  bool isSecondTime = false;  // the first time the text is only tried
  EXPECT_FALSE(writeWith(target, [&](ztcad::ByteOutput& output) {
    output.write("x");
    if (isSecondTime) close(pipe);
    isSecondTime = true;
    output.write("x");
  }));
  sigset_t pending;
  EXPECT_EQ(sigpending(&pending), 0);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST_F(PosixFiles, ASignalOfTheHostStaysPending) {
  sigset_t broken;
  sigemptyset(&broken);
  sigaddset(&broken, SIGPIPE);
  ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &broken, nullptr), 0);
  ASSERT_EQ(pthread_kill(pthread_self(), SIGPIPE), 0);
  EXPECT_TRUE(write(target, "x"));
  const timespec now = {};
  EXPECT_EQ(sigtimedwait(&broken, nullptr, &now), SIGPIPE);
  EXPECT_EQ(pthread_sigmask(SIG_UNBLOCK, &broken, nullptr), 0);
}

TEST_F(PosixFiles, ADeviceIsWrittenToAndNotReplaced) {
  EXPECT_TRUE(write("/dev/null", "x"));
  EXPECT_EQ(typeOf("/dev/null"), static_cast<mode_t>(S_IFCHR));
}

TEST_F(PosixFiles, AFullDeviceFails) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "/dev/full does not exist";
  EXPECT_FALSE(write("/dev/full", "x"));
  EXPECT_FALSE(write("/dev/full", std::string(1000000, 'x')));
  EXPECT_EQ(typeOf("/dev/full"), static_cast<mode_t>(S_IFCHR));
}

TEST_F(PosixFiles, AFullDiskLeavesTheEarlierFile) {
  const std::string earlier(50, 'e');
  const std::string later(300000, 'l');
  putBytes(target, earlier);
  for (const rlim_t space : {0u, 1u, 60u, 4096u, 70000u, 299999u}) {
    {
      const FullDisk disk(space);
      EXPECT_FALSE(write(target, later)) << space;
      EXPECT_FALSE(write(files.path("new.xml"), later)) << space;
    }
    EXPECT_EQ(bytesOf(target), earlier) << space;
    EXPECT_EQ(files.names(), Names{"document.xml"}) << space;
  }
  const FullDisk disk(later.size());
  EXPECT_TRUE(write(target, later));
  EXPECT_TRUE(bytesOf(target) == later);
}

TEST_F(PosixFiles, AFullDiskIsDetectedIfOnlyTheLastByteDoesNotFit) {
  putBytes(target, "earlier");
  for (const std::size_t size : {1u, 20u, 1000u, 16384u, 65536u, 100000u, 1000000u}) {
    {
      const FullDisk disk(size - 1);
      EXPECT_FALSE(writeWith(target, [size](ztcad::ByteOutput& output) {
        for (std::size_t written = 0; written < size; ++written)
          output.write("x");
      })) << size;
    }
    EXPECT_EQ(bytesOf(target), "earlier") << size;
    EXPECT_EQ(files.names(), Names{"document.xml"}) << size;
  }
}

TEST_F(PosixFiles, AFileInAReadOnlyFolderIsWrittenDirectly) {
  putBytes(target, "earlier and longer");
  ASSERT_EQ(chmod(target.c_str(), 0666), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 0555), 0);
  const ino_t inode = inodeOf(target);
  {
    const OrdinaryUser user;
    EXPECT_TRUE(write(target, "x"));
    EXPECT_FALSE(write(files.path("new.xml"), "x"));
  }
  ASSERT_EQ(chmod(files.folder().c_str(), 0700), 0);
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(inodeOf(target), inode);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(PosixFiles, AReadOnlyFileIsKept) {
  putBytes(target, "earlier");
  ASSERT_EQ(chmod(target.c_str(), 0444), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 0777), 0);
  {
    const OrdinaryUser user;
    EXPECT_FALSE(write(target, "x"));
  }
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(permissionsOf(target), 0444u);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(PosixFiles, AFileOfAnotherUserInAStickyFolderIsWrittenDirectly) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can create a file of another user";
  putBytes(target, "earlier");
  ASSERT_EQ(chmod(target.c_str(), 0666), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 01777), 0);
  const ino_t inode = inodeOf(target);
  {
    const OrdinaryUser user;
    EXPECT_TRUE(write(target, "x"));
  }
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(inodeOf(target), inode);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(PosixFiles, AFileWithTheLongestNameIsReplacedLikeAnyOther) {
  const std::string longest(255, 'n');
  putBytes(files.path(longest), "earlier");
  {
    const FullDisk disk(10);
    EXPECT_FALSE(write(files.path(longest), std::string(11, 'x')));
  }
  EXPECT_EQ(bytesOf(files.path(longest)), "earlier");
  EXPECT_TRUE(write(files.path(longest), "x"));
  EXPECT_EQ(bytesOf(files.path(longest)), "x");
  EXPECT_EQ(files.names(), Names{longest});
  EXPECT_FALSE(write(files.path(longest + 'n'), "x"));
  EXPECT_EQ(files.names(), Names{longest});
}

TEST_F(PosixFiles, AHardLinkedFileSurvivesATextThatIsRefused) {
  putBytes(target, "earlier");
  ASSERT_EQ(link(target.c_str(), files.path("other.xml").c_str()), 0);
  EXPECT_FALSE(writeWith(target, [](ztcad::ByteOutput& output) {
    output.write("x");
    throw ztcad::TextRefused("too late");
  }));
  EXPECT_EQ(bytesOf(target), "earlier");
}

// ------------------------------------------------------------------------ file names, owner, attributes

TEST_F(PosixFiles, NamesThatDifferInBytesStayDifferent) {
  const std::string names[] = {"\xec\xe8\xf0.xml", "\xe4\xee\xec.xml", "мир.xml", "\xEF\xBB\xBFx.xml"};
  for (const std::string& name : names)
    EXPECT_TRUE(write(files.path(name), name));
  for (const std::string& name : names) {
    EXPECT_EQ(access(files.path(name).c_str(), F_OK), 0) << name;
    EXPECT_EQ(read(files.path(name)).bytes.view(), name);
    EXPECT_EQ(unlink(files.path(name).c_str()), 0) << "QTemporaryDir does not find all of these names";
  }
}

struct Owner {
  uid_t user;
  gid_t group;
};
bool operator==(const Owner& one, const Owner& other) {
  return one.user == other.user && one.group == other.group;
}

Owner ownerOf(const std::string& fileName) {
  struct stat status = {};
  EXPECT_EQ(stat(fileName.c_str(), &status), 0) << fileName;
  return {status.st_uid, status.st_gid};
}

TEST_F(PosixFiles, TheOwnerIsKept) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can create a file of another user";
  putBytes(target, "earlier");
  const Owner owner = {1234, 5678};
  ASSERT_EQ(chown(target.c_str(), owner.user, owner.group), 0);
  ASSERT_EQ(chmod(target.c_str(), 06755), 0);
  const ino_t inode = inodeOf(target);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_NE(inodeOf(target), inode);
  EXPECT_TRUE(ownerOf(target) == owner);
  EXPECT_EQ(permissionsOf(target), 06755U);
}

TEST_F(PosixFiles, AFileWhoseOwnerCannotBeKeptIsWrittenDirectly) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can create a file of another user";
  putBytes(target, "earlier");
  ASSERT_EQ(chmod(target.c_str(), 0666), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 0777), 0);
  const ino_t inode = inodeOf(target);
  {
    const OrdinaryUser user;
    EXPECT_TRUE(write(target, "x"));
  }
  EXPECT_EQ(bytesOf(target), "x");
  EXPECT_EQ(inodeOf(target), inode);
  EXPECT_TRUE((ownerOf(target) == Owner{0, getegid()}));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

std::optional<std::string> attributeOf(const std::string& fileName, const char* name) {
  char value[1000];
  const ssize_t size = getxattr(fileName.c_str(), name, value, sizeof value);
  return size < 0 ? std::nullopt : std::optional(std::string(value, std::size_t(size)));
}

TEST_F(PosixFiles, ExtendedAttributesAreKept) {
  putBytes(target, "earlier");
  if (setxattr(target.c_str(), "user.note", "kept", 4, 0) != 0)
    GTEST_SKIP() << "the file system has no extended attributes";
  ASSERT_EQ(setxattr(target.c_str(), "user.empty", "", 0, 0), 0);
  const ino_t inode = inodeOf(target);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_NE(inodeOf(target), inode);
  EXPECT_EQ(attributeOf(target, "user.note"), "kept");
  EXPECT_EQ(attributeOf(target, "user.empty"), "");
}

/// An access control list that gives the owner and user 1234 everything and others nothing, as the kernel
/// stores it.
std::string accessList() {
  std::string bytes("\x02\0\0\0", 4);  // version
  const auto entry = [&bytes](char tag, char permissions, unsigned id) {
    const char fields[] = {tag,
                           0,
                           permissions,
                           0,
                           char(id & 255U),
                           char(id >> 8U & 255U),
                           char(id >> 16U & 255U),
                           char(id >> 24U)};
    bytes.append(fields, sizeof fields);
  };
  constexpr unsigned nobody = ~0U;
  entry(0x01, 7, nobody);  // owner
  entry(0x02, 7, 1234);    // a user
  entry(0x04, 0, nobody);  // group
  entry(0x10, 7, nobody);  // mask
  entry(0x20, 0, nobody);  // others
  return bytes;
}

TEST_F(PosixFiles, AnAccessControlListIsKept) {
  putBytes(target, "earlier");
  const std::string list = accessList();
  if (setxattr(target.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0)
    GTEST_SKIP() << "the file system has no access control lists";
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(attributeOf(target, "system.posix_acl_access"), list);
}

TEST_F(PosixFiles, AnAccessControlListIsNotInheritedFromTheFolder) {
  putBytes(target, "earlier");
  ASSERT_EQ(chmod(target.c_str(), 0640), 0);
  const std::string list = accessList();
  if (setxattr(files.folder().c_str(), "system.posix_acl_default", list.data(), list.size(), 0) != 0)
    GTEST_SKIP() << "the file system has no access control lists";
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(attributeOf(target, "system.posix_acl_access"), std::nullopt);
  EXPECT_EQ(permissionsOf(target), 0640U);
}

// ------------------------------------------------------------------------------------------- reading

TEST_F(PosixFiles, OnlyRegularFilesAreRead) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  for (const std::string& name : {target, std::string("/dev/zero"), std::string("/dev/null")}) {
    const ztcad::FileBytes file = read(name);
    EXPECT_EQ(file.outcome, ReadOutcome::Failed) << name;
    EXPECT_EQ(file.error.code, QFileDevice::OpenError) << name;
    EXPECT_EQ(file.error.message, QLatin1String("not a regular file")) << name;
  }
}

TEST_F(PosixFiles, AFileThatTheKernelComputesIsReadWhole) {
  const ztcad::FileBytes file = read("/proc/self/maps");
  EXPECT_EQ(file.outcome, ReadOutcome::Done);
  EXPECT_GT(file.bytes.size(), 1000U);
  EXPECT_EQ(ztcad::readFile("/proc/self/maps", 1000).outcome, ReadOutcome::TooLong);
}

TEST_F(PosixFiles, AnUnreadableFileYieldsAnError) {
  putBytes(target, "x");
  ASSERT_EQ(chmod(target.c_str(), 0000), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 0755), 0);
  const OrdinaryUser user;
  const ztcad::FileBytes file = read(target);
  EXPECT_EQ(file.outcome, ReadOutcome::Failed);
  EXPECT_EQ(file.error.code, QFileDevice::OpenError);
  EXPECT_EQ(file.bytes.view(), "");
}

// ------------------------------------------------------------------------------------- several processes

/// Writes the two texts alternately until it is killed.
[[noreturn]] void writeForever(const std::string& fileName, const std::string& one,
                               const std::string& other) {
  while (write(fileName, one) && write(fileName, other)) {
  }
  _exit(1);
}

TEST_F(PosixFiles, ProcessesThatWriteOneFileNeverTearIt) {
  const std::string texts[] = {std::string(20000, 'a'), std::string(30000, 'b')};
  ASSERT_TRUE(write(target, texts[0]));
  pid_t writers[3] = {};
  for (pid_t& writer : writers) {
    writer = fork();
    if (writer == 0) writeForever(target, texts[0], texts[1]);
  }
  int torn = 0;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
  while (std::chrono::steady_clock::now() < end) {
    const std::string found(read(target).bytes.view());
    torn += found == texts[0] || found == texts[1] ? 0 : 1;
  }
  for (const pid_t writer : writers) {
    EXPECT_EQ(waitpid(writer, nullptr, WNOHANG), 0) << "a writer has failed";
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
  }
  EXPECT_EQ(torn, 0);
}

}  // namespace
