#include "core/document/file.h"

#include <gtest/gtest.h>
#include <functional>
#include <new>
#include <QFile>
#include <string>
#include <thread>

#include "temporary_files.h"

#if defined(_WIN32)
#include <windows.h>
#endif
#if defined(__linux__)
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>
#include <cstdlib>
#endif

namespace {

using Names = std::vector<std::string>;
using Write = std::function<void(ztcad::ByteOutput&)>;

bool writeWith(const std::string& fileName, const Write& write) {
  return ztcad::writeTextFile(QString::fromStdString(fileName), write).code == 0;
}

bool write(const std::string& fileName, const std::string& bytes) {
  return writeWith(fileName, [&bytes](ztcad::ByteOutput& output) { output.write(bytes); });
}

class FileWriting : public testing::Test {
 protected:
  TemporaryFiles files;
  const std::string target = files.path("document.xml");
};

TEST_F(FileWriting, ANewFileHoldsTheBytesAndNoTemporaryFileIsLeft) {
  for (const std::string& bytes : {std::string(), std::string("a\n"), std::string("a\0\r\n\xFF", 5)}) {
    EXPECT_TRUE(write(target, bytes));
    EXPECT_EQ(textBytesOf(target), bytes);
    EXPECT_EQ(files.names(), Names{"document.xml"});
  }
}

TEST_F(FileWriting, PiecesAreConcatenated) {
  std::string all;
  EXPECT_TRUE(writeWith(target, [&all](ztcad::ByteOutput& output) {
    for (int i = 0; i < 20000; ++i) {
      const std::string piece = std::to_string(i) + '\n';
      output.write(piece);
      all += piece;
    }
  }));
  EXPECT_TRUE(textBytesOf(target) == all);
}

TEST_F(FileWriting, TheEarlierFileStaysCompleteUntilTheEnd) {
  putBytes(target, "earlier");
  EXPECT_TRUE(writeWith(target, [this](ztcad::ByteOutput& output) {
    output.write(std::string(1000000, 'n'));
    EXPECT_EQ(bytesOf(target), "earlier");
  }));
  EXPECT_EQ(bytesOf(target), std::string(1000000, 'n'));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(FileWriting, AnExceptionLeavesTheEarlierFile) {
  putBytes(target, "earlier");
  const auto writeAndThrow = [](ztcad::ByteOutput& output) {
    output.write(std::string(1000000, 'n'));
    throw std::bad_alloc();
  };
  EXPECT_THROW(writeWith(target, writeAndThrow), std::bad_alloc);
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
  EXPECT_THROW(writeWith(files.path("new.xml"), writeAndThrow), std::bad_alloc);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(FileWriting, APathThatCannotBeAFileFails) {
  EXPECT_FALSE(write("", "x"));
  EXPECT_FALSE(write(files.folder(), "x"));
  EXPECT_FALSE(write(files.folder() + '/', "x"));
  EXPECT_FALSE(write(files.path("absent/document.xml"), "x"));
  EXPECT_EQ(files.names(), Names{});
}

TEST_F(FileWriting, ANameThatContainsANulFails) {
  putBytes(target, "earlier");
  EXPECT_FALSE(write(target + std::string("\0.xml", 5), "x"));
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

#if defined(_WIN32)

TEST_F(FileWriting, HardLinksAreKept) {
  putBytes(target, "earlier and longer");
  const std::string other = files.path("other.xml");
  ASSERT_TRUE(CreateHardLinkA(other.c_str(), target.c_str(), nullptr));
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(other), "x");
  EXPECT_EQ(files.names(), (Names{"document.xml", "other.xml"}));
}

#endif

// --------------------------------------------------------------------------------------------------- reading

TEST(FileReading, ReturnsTheBytesUnchanged) {
  const TemporaryFiles files;
  for (const std::string& bytes : {std::string(), std::string("a\r\nb\rc\n\0\x1a\xEF\xBB\xBF", 12)}) {
    QByteArray read("earlier");
    EXPECT_EQ(ztcad::readFile(QString::fromStdString(files.put("file", bytes)), read).code, 0);
    EXPECT_EQ(read.toStdString(), bytes);
  }
}

TEST(FileReading, ReturnsTheErrorOfQFile) {
  const TemporaryFiles files;
  QByteArray read;
  EXPECT_EQ(ztcad::readFile(QString::fromStdString(files.path("absent")), read).code, QFileDevice::OpenError);
  EXPECT_EQ(ztcad::readFile(QString::fromStdString(files.folder()), read).code, QFileDevice::OpenError);
  EXPECT_EQ(read, QByteArray());
}

// ------------------------------------------------------------------- links, permissions, devices, full disks

#if defined(__linux__)

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

/// Drops root's privileges for a scope, because file permissions do not apply to root; does nothing for other
/// users.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    if (!m_root) return;
    if (setresgid(nobody, nobody, 0) != 0 || setresuid(nobody, nobody, 0) != 0)
      throw std::runtime_error("cannot drop privileges");
  }
  ~OrdinaryUser() {
    if (m_root && (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0)) std::abort();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr uid_t nobody = 65534;
  const bool m_root = geteuid() == 0;
};

/// Simulates a full disk for a scope: no file of this process can grow beyond `bytes`.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    if (getrlimit(RLIMIT_FSIZE, &m_limit) != 0) throw std::runtime_error("no file size limit");
    rlimit limit = m_limit;
    limit.rlim_cur = bytes;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("cannot limit file sizes");
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &m_limit);
    std::signal(SIGXFSZ, m_handler);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*m_handler)(int);
  rlimit m_limit = {};
};

TEST_F(FileWriting, ANewFileHasDefaultPermissions) {
  const mode_t mask = umask(027);
  files.put("plain", "");
  EXPECT_TRUE(write(target, "x"));
  umask(mask);
  EXPECT_EQ(permissionsOf(target), permissionsOf(files.path("plain")));
  EXPECT_EQ(permissionsOf(target), 0640u);
}

TEST_F(FileWriting, PermissionsOfTheEarlierFileAreKept) {
  for (const mode_t permissions : {0600u, 0640u, 0644u, 0666u, 0755u}) {
    putBytes(target, "earlier");
    ASSERT_EQ(chmod(target.c_str(), permissions), 0);
    EXPECT_TRUE(write(target, "x"));
    EXPECT_EQ(permissionsOf(target), permissions);
    EXPECT_EQ(bytesOf(target), "x");
  }
}

TEST_F(FileWriting, AnOpenReaderReadsTheEarlierFileToItsEnd) {
  putBytes(target, "earlier");
  std::ifstream reader(target, std::ios::binary);
  EXPECT_TRUE(write(target, "x"));
  std::string seen;
  EXPECT_TRUE(std::getline(reader, seen));
  EXPECT_EQ(seen, "earlier");
}

TEST_F(FileWriting, SymbolicLinksAreFollowedAndKept) {
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

TEST_F(FileWriting, ADanglingLinkCreatesItsTarget) {
  ASSERT_EQ(symlink("made.xml", target.c_str()), 0);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(linkTarget(target), "made.xml");
  EXPECT_EQ(bytesOf(files.path("made.xml")), "x");
}

TEST_F(FileWriting, HardLinksAreKept) {
  putBytes(target, "earlier and longer");
  const std::string other = files.path("other.xml");
  ASSERT_EQ(link(target.c_str(), other.c_str()), 0);
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(other), "x");
  EXPECT_EQ(inodeOf(other), inodeOf(target));
  EXPECT_EQ(files.names(), (Names{"document.xml", "other.xml"}));
}

TEST_F(FileWriting, APipeIsWrittenToAndNotReplaced) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = bytesOf(target); });
  EXPECT_TRUE(write(target, std::string(100000, 'x')));
  reader.join();
  EXPECT_EQ(received, std::string(100000, 'x'));
  EXPECT_EQ(typeOf(target), static_cast<mode_t>(S_IFIFO));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(FileWriting, ADeviceIsWrittenToAndNotReplaced) {
  EXPECT_TRUE(write("/dev/null", "x"));
  EXPECT_EQ(typeOf("/dev/null"), static_cast<mode_t>(S_IFCHR));
}

TEST_F(FileWriting, AFullDeviceFails) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "/dev/full does not exist";
  EXPECT_FALSE(write("/dev/full", "x"));
  EXPECT_FALSE(write("/dev/full", std::string(1000000, 'x')));
  EXPECT_EQ(typeOf("/dev/full"), static_cast<mode_t>(S_IFCHR));
}

TEST_F(FileWriting, AFullDiskLeavesTheEarlierFile) {
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

TEST_F(FileWriting, AFullDiskIsDetectedIfOnlyTheLastByteDoesNotFit) {
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

TEST_F(FileWriting, AFileInAReadOnlyFolderIsWrittenDirectly) {
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

TEST_F(FileWriting, AReadOnlyFileIsKept) {
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

TEST_F(FileWriting, AFileOfAnotherUserInAStickyFolderIsWrittenDirectly) {
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

TEST_F(FileWriting, AFileWhoseNameLeavesNoSpaceForASuffixIsWrittenDirectly) {
  const std::string longest(255, 'n');
  EXPECT_TRUE(write(files.path(longest), "x"));
  EXPECT_EQ(bytesOf(files.path(longest)), "x");
  EXPECT_EQ(files.names(), Names{longest});
  EXPECT_FALSE(write(files.path(longest + 'n'), "x"));
}

TEST(FileReading, AnUnreadableFileYieldsAnError) {
  const TemporaryFiles files;
  const std::string file = files.put("file", "x");
  ASSERT_EQ(chmod(file.c_str(), 0000), 0);
  ASSERT_EQ(chmod(files.folder().c_str(), 0755), 0);
  const OrdinaryUser user;
  QByteArray read;
  EXPECT_EQ(ztcad::readFile(QString::fromStdString(file), read).code, QFileDevice::OpenError);
  EXPECT_EQ(read, QByteArray());
}

#endif

}  // namespace
