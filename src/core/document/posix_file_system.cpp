#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <iterator>
#include <optional>

#include "file_system.h"
#include "posix_descriptor.h"
#include "posix_file_identity.h"
#include "posix_signals.h"

namespace ztcad {

namespace {

using Status = struct stat;

// ------------------------------------------------------------------------------------------ names

/// The folder part of a name with its slash; empty for a name in the current folder.
std::string folderOf(const std::string& name) { return name.substr(0, name.rfind('/') + 1); }

/// What a name leads to; nothing if there is no such file.
std::optional<Status> statusOf(const std::string& name) {
  Status status = {};
  if (::stat(name.c_str(), &status) == 0) return status;
  if (errno != ENOENT) failWith(QFileDevice::OpenError);
  return std::nullopt;
}

/// The name at the end of a chain of symbolic links; a file of that name need not exist.
std::string withoutLinks(std::string name) {
  constexpr int longestChain = 40;  // that of Linux
  for (int links = 0; links < longestChain; ++links) {
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = ::readlink(name.c_str(), target.data(), target.size());
    if (length <= 0) return name;
    if (target.front() == '/') name.clear();
    name.erase(folderOf(name).size());  // a link is relative to its folder
    name.append(target.data(), static_cast<std::size_t>(length));
  }
  throw FileFailure(QFileDevice::OpenError, ELOOP);
}

// ------------------------------------------------------------------------------------------ replacing

/// The process lacks the right to replace the target, or the target cannot be replaced at all. Not thrown for
/// any other failure: where space, quota or the disk fail, writing directly would only destroy the earlier
/// file.
class ReplacementRefused final : public FileFailure {
 public:
  using FileFailure::FileFailure;
};

/// Throws for `errno`.
[[noreturn]] void refuseOrFail(QFileDevice::FileError code, std::initializer_list<int> refusals) {
  const int error = errno;
  if (std::find(refusals.begin(), refusals.end(), error) != refusals.end())
    throw ReplacementRefused(code, error);
  throw FileFailure(code, error);
}

/// A file beside the target, removed unless it takes the target's place. Where the system can, it gets its
/// name only at the end, so that nothing is left of it if the process is killed before. The name is short: it
/// must be possible for every name that the target may have.
class TemporaryFile {
 public:
  /// @param replaces whether the target exists; if not, the new file gets the permissions of a new file
  TemporaryFile(const Descriptor& folder, bool replaces)
      : m_folder(folder), m_file(replaces ? createUnnamed() : createNamed(0666)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (m_hasName) ::unlinkat(m_folder.number(), m_name.data(), 0);
  }

  const Descriptor& file() const { return m_file; }

  void takePlaceOf(const std::string& name) {
    m_file.sync();
    if (!m_hasName) giveName();
    m_file.close();
    if (::renameat(m_folder.number(), m_name.data(), m_folder.number(), name.c_str()) != 0)
      refuseOrFail(QFileDevice::RenameError, {EACCES, EPERM, EROFS, EBUSY, EXDEV});  // EBUSY: a mount point
    m_hasName = false;
  }

 private:
  /// Only for files that get the permissions of another one: older kernels ignore the mask for new ones.
  int createUnnamed() {
    constexpr mode_t forOwner = 0600;
#if defined(O_TMPFILE)
    constexpr int flags = O_WRONLY | O_TMPFILE | O_CLOEXEC;
    const int number = uninterrupted([&] { return ::openat(m_folder.number(), ".", flags, forOwner); });
    if (number >= 0 && ::access(pathOf(number).data(), F_OK) == 0) return number;
    if (number >= 0)
      ::close(number);
    else if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)  // otherwise there are none here
      refuseOrFail(QFileDevice::OpenError, {EACCES, EPERM, EROFS});
#endif
    return createNamed(forOwner);
  }

  int createNamed(mode_t mode) {
    int number = -1;
    tryNames([&] {
      constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
      number = uninterrupted([&] { return ::openat(m_folder.number(), m_name.data(), flags, mode); });
      return number >= 0;
    });
    return number;
  }

  void giveName() {
    tryNames([this] {
      return ::linkat(AT_FDCWD, pathOf(m_file.number()).data(), m_folder.number(), m_name.data(),
                      AT_SYMLINK_FOLLOW) == 0;
    });
  }

  /// Repeats the creation of a name as long as the name exists.
  template <typename Create>
  void tryNames(Create&& create) {
    constexpr int attempts = 1000;
    for (int attempt = 0; attempt < attempts && !m_hasName; ++attempt) {
      setName();
      m_hasName = create();
      if (!m_hasName && errno != EEXIST) break;
    }
    if (!m_hasName) refuseOrFail(QFileDevice::OpenError, {EACCES, EPERM, EROFS});
  }

  void setName() {
    static unsigned counter = 0;
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const auto mixed = static_cast<unsigned>(now.tv_nsec) * 2654435761U ^ static_cast<unsigned>(::getpid());
    std::snprintf(m_name.data(), m_name.size(), ".ztcad-%08x", mixed + counter++);
  }

  /// The name by which the system knows an open file without a name.
  static std::array<char, 32> pathOf(int number) {
    std::array<char, 32> path = {};
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", number);
    return path;
  }

  const Descriptor& m_folder;
  std::array<char, 16> m_name = {};
  bool m_hasName = false;
  Descriptor m_file;  // after the members that its creation sets
};

/// Only searching a folder is required; one that may be read can be synchronised, too.
Descriptor openFolder(const std::string& name) {
  const char* const folder = name.empty() ? "." : name.c_str();
  int number = uninterrupted([&] { return ::open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
#if defined(O_PATH)
  if (number < 0 && errno == EACCES) number = ::open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC);
#endif
  if (number < 0) failWith(QFileDevice::OpenError);
  return Descriptor(number);
}

/// Creates the file or replaces the one of the given status.
void replace(const std::string& fileName, const std::optional<Status>& earlier, const WriteText& write) {
  const std::string name = withoutLinks(fileName);
  const std::string folderName = folderOf(name);
  const std::string bareName = name.substr(folderName.size());
  if (bareName.empty()) throw FileFailure(QFileDevice::OpenError, fileName.empty() ? ENOENT : EISDIR);
  const Descriptor folder = openFolder(folderName);
  TemporaryFile temporary(folder, earlier.has_value());
  const auto keep = [&](auto copy) {
    if (earlier && !copy()) refuseOrFail(QFileDevice::PermissionsError, {EACCES, EPERM, ENOTSUP});
  };
  keep([&] { return copyOwner(*earlier, temporary.file()); });
  DescriptorOutput output(temporary.file());
  write(output);
  // after the text: writing removes some permissions
  keep([&] { return copyPermissions(name, *earlier, temporary.file()); });
  temporary.takePlaceOf(bareName);
  ::fsync(folder.number());  // no failure: the file under the name is complete, whichever it is
}

// ------------------------------------------------------------------------------------------ writing directly

/// Replacing such a file would lose something: it is no regular file, or it has other names. A file without a
/// name was replaced by another process a moment ago and says nothing about its successor.
bool mustNotBeReplaced(const Status& status) { return !S_ISREG(status.st_mode) || status.st_nlink > 1; }

bool hasName(const Status& status) { return status.st_nlink > 0; }

/// @return false, with nothing written, if the file that was opened does not fulfil the condition
bool writeDirectly(const std::string& fileName, bool (*isAsExpected)(const Status&), const WriteText& write) {
  NoOutput nothing;
  write(nothing);
  const int number =
      uninterrupted([&] { return ::open(fileName.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
  if (number < 0) failWith(QFileDevice::OpenError);
  Descriptor file(number);
  const Status status = file.status();
  if (!isAsExpected(status)) return false;
  const bool isRegular = S_ISREG(status.st_mode);
  if (isRegular && ::ftruncate(number, 0) != 0) failWith(QFileDevice::ResizeError);
  // O_NONBLOCK was for opening: a pipe without a reader fails instead of waiting for one
  if (!isRegular && ::fcntl(number, F_SETFL, 0) != 0) failWith(QFileDevice::OpenError);
  DescriptorOutput output(file);
  write(output);
  if (isRegular) file.sync();
  file.close();
  return true;
}

// ------------------------------------------------------------------------------------------ saving, loading

/// @return false if another process changed the target in the meantime
bool trySaving(const std::string& fileName, const WriteText& write) {
  const std::optional<Status> earlier = statusOf(fileName);
  if (earlier && mustNotBeReplaced(*earlier)) return writeDirectly(fileName, mustNotBeReplaced, write);
  if (earlier && ::faccessat(AT_FDCWD, fileName.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
    failWith(QFileDevice::WriteError);
  try {
    replace(fileName, earlier, write);
    return true;
  } catch (const ReplacementRefused&) {
    if (!earlier) throw;
  }
  return writeDirectly(fileName, hasName, write);
}

/// Opens without waiting, because another process may put a pipe into the place of the file.
Descriptor openRegularFile(const std::string& fileName) {
  const int number =
      uninterrupted([&] { return ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
  if (number < 0) failWith(QFileDevice::OpenError);
  return Descriptor(number);
}

void requireRegularFile(const Status& status) {
  if (S_ISDIR(status.st_mode)) throw FileFailure(QFileDevice::OpenError, EISDIR);
  if (!S_ISREG(status.st_mode)) throw FileFailure(QFileDevice::OpenError, notARegularFile);
}

}  // namespace

FileName fileNameOf(std::string_view hostName) { return FileName(hostName); }

bool isLackOfResources(int systemError) {
  constexpr int errors[] = {EMFILE, ENFILE, ENOMEM, ENOSPC, EDQUOT, EFBIG};
  return std::find(std::begin(errors), std::end(errors), systemError) != std::end(errors);
}

void saveBytes(const FileName& fileName, const WriteText& write) {
  const BlockedWriteSignals blocked;
  constexpr int attempts = 100;
  for (int attempt = 0; attempt < attempts; ++attempt)
    if (trySaving(fileName, write)) return;
  throw FileFailure(QFileDevice::OpenError, EAGAIN);
}

FileBytes loadBytes(const FileName& fileName, std::size_t longest) {
  Status status = {};
  if (::stat(fileName.c_str(), &status) != 0) return FileBytes(ReadOutcome::Missing);
  requireRegularFile(status);
  const Descriptor file = openRegularFile(fileName);
  status = file.status();
  requireRegularFile(status);
  return readAll(file, static_cast<std::uintmax_t>(status.st_size), longest);
}

}  // namespace ztcad
