#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#include <algorithm>
#include <array>
#include <cwchar>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "../../text/narrow_text.h"
#include "file_system.h"

namespace ztcad {

namespace {

/// Throws for the last error.
[[noreturn]] void failWith(QFileDevice::FileError code) {
  throw FileFailure(code, static_cast<int>(GetLastError()));
}

/// Owns an open file.
class File {
 public:
  File(const std::wstring& name, DWORD access, DWORD sharing, DWORD creation)
      : m_handle(
            CreateFileW(name.c_str(), access, sharing, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    if (isOpen()) CloseHandle(m_handle);
  }

  bool isOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
  bool isOnDisk() const { return GetFileType(m_handle) == FILE_TYPE_DISK; }

  /// Everything zero if the system does not know.
  BY_HANDLE_FILE_INFORMATION information() const {
    BY_HANDLE_FILE_INFORMATION information = {};
    GetFileInformationByHandle(m_handle, &information);
    return information;
  }

  std::wstring finalName() const {
    std::wstring name(32768, L'\0');  // the longest name that Windows knows
    const DWORD length = GetFinalPathNameByHandleW(m_handle, name.data(), static_cast<DWORD>(name.size()), 0);
    if (length == 0 || length >= name.size()) failWith(QFileDevice::OpenError);
    name.resize(length);
    return name;
  }

  std::size_t read(char* bytes, std::size_t size) const {
    DWORD count = 0;
    if (!ReadFile(m_handle, bytes, static_cast<DWORD>(std::min(size, largestPiece)), &count, nullptr))
      failWith(QFileDevice::ReadError);
    return count;
  }

  void write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const auto size = static_cast<DWORD>(std::min(bytes.size(), largestPiece));
      DWORD count = 0;
      if (!WriteFile(m_handle, bytes.data(), size, &count, nullptr)) failWith(QFileDevice::WriteError);
      if (count == 0) throw FileFailure(QFileDevice::WriteError, ERROR_WRITE_FAULT);
      bytes.remove_prefix(count);
    }
  }

  /// The file's position is its start.
  void empty() const {
    if (!SetEndOfFile(m_handle)) failWith(QFileDevice::ResizeError);
  }

  /// Waits until the bytes are on the disk.
  void sync() const {
    if (!FlushFileBuffers(m_handle)) failWith(QFileDevice::WriteError);
  }

  void close() {
    if (!CloseHandle(std::exchange(m_handle, INVALID_HANDLE_VALUE))) failWith(QFileDevice::WriteError);
  }

 private:
  static constexpr std::size_t largestPiece = 1U << 30U;

  HANDLE m_handle;
};

class FileOutput final : public ByteOutput {
 public:
  explicit FileOutput(const File& file) : m_file(file) {}
  void write(std::string_view bytes) override { m_file.write(bytes); }

 private:
  const File& m_file;
};

constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// ------------------------------------------------------------------------------------------ names

bool startsWith(const std::wstring& text, const wchar_t* start) { return text.rfind(start, 0) == 0; }

/// The full name, in the form that may be longer than 260 characters if it is. Empty if there is none.
std::wstring fullName(const FileName& fileName) {
  const DWORD needed = GetFullPathNameW(fileName.c_str(), 0, nullptr, nullptr);
  if (needed == 0) return {};
  std::wstring name(needed, L'\0');
  name.resize(GetFullPathNameW(fileName.c_str(), needed, name.data(), nullptr));
  constexpr std::size_t spaceForOtherNames = 32;  // the temporary file may have a longer name than the target
  if (name.size() + spaceForOtherNames < MAX_PATH || startsWith(name, LR"(\\?\)") ||
      startsWith(name, LR"(\\.\)"))
    return name;
  return startsWith(name, LR"(\\)") ? LR"(\\?\UNC)" + name.substr(1) : LR"(\\?\)" + name;
}

bool has(DWORD attributes, DWORD attribute) { return (attributes & attribute) != 0; }
bool exists(DWORD attributes) { return attributes != INVALID_FILE_ATTRIBUTES; }

/// The name of the file to which a symbolic link leads; the same name for a file that is no link.
std::wstring withoutLinks(const std::wstring& name, DWORD attributes) {
  if (!exists(attributes) || !has(attributes, FILE_ATTRIBUTE_REPARSE_POINT)) return name;
  const File file(name, 0, sharedByAll, OPEN_EXISTING);
  if (!file.isOpen()) failWith(QFileDevice::OpenError);
  return file.finalName();
}

// ------------------------------------------------------------------------------------------ replacing

/// The system lets no other file take the target's place. Not thrown for any other failure: where space or
/// the disk fail, writing directly would only destroy the earlier file.
class ReplacementRefused final : public FileFailure {
 public:
  using FileFailure::FileFailure;
};

/// Throws for the last error.
[[noreturn]] void refuseOrFail(QFileDevice::FileError code, std::initializer_list<DWORD> refusals) {
  const DWORD error = GetLastError();
  if (std::find(refusals.begin(), refusals.end(), error) != refusals.end())
    throw ReplacementRefused(code, static_cast<int>(error));
  throw FileFailure(code, static_cast<int>(error));
}

/// The name of a file beside the target that does not exist.
std::wstring temporaryNameBeside(const std::wstring& name) {
  static unsigned counter = 0;
  const unsigned mixed = (GetTickCount() * 2654435761U ^ GetCurrentProcessId()) + counter++;
  std::array<wchar_t, 16> bareName = {};
  _snwprintf(bareName.data(), bareName.size() - 1, L".ztcad-%08x", mixed);
  return name.substr(0, name.find_last_of(LR"(\/)") + 1) + bareName.data();
}

/// Deletes a file at the end of a scope unless it was renamed.
class TemporaryName {
 public:
  explicit TemporaryName(const std::wstring& name) : m_name(name) {}
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;
  ~TemporaryName() {
    if (m_exists) DeleteFileW(m_name.c_str());
  }

  void takePlaceOf(const std::wstring& target) {
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (!MoveFileExW(m_name.c_str(), target.c_str(), flags))
      refuseOrFail(QFileDevice::RenameError, {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION});
    m_exists = false;
  }

 private:
  const std::wstring& m_name;
  bool m_exists = true;
};

void replace(const std::wstring& name, const WriteText& write) {
  constexpr int attempts = 1000;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    const std::wstring temporaryName = temporaryNameBeside(name);
    // sharing the right to delete: the file may be open when it is removed
    File file(temporaryName, GENERIC_WRITE, FILE_SHARE_DELETE, CREATE_NEW);
    if (!file.isOpen() && GetLastError() == ERROR_FILE_EXISTS) continue;
    if (!file.isOpen()) refuseOrFail(QFileDevice::OpenError, {ERROR_ACCESS_DENIED});
    TemporaryName temporary(temporaryName);
    FileOutput output(file);
    write(output);
    file.sync();
    file.close();
    temporary.takePlaceOf(name);
    return;
  }
  throw FileFailure(QFileDevice::OpenError, ERROR_FILE_EXISTS);
}

// ------------------------------------------------------------------------------------------ writing directly

/// Replacing such a file would lose something: it is no file on a disk, or it has other names.
bool mustNotBeReplaced(const File& file) { return !file.isOnDisk() || file.information().nNumberOfLinks > 1; }

bool mustNotBeReplaced(const std::wstring& name) {
  const File file(name, 0, sharedByAll, OPEN_EXISTING);
  return file.isOpen() && mustNotBeReplaced(file);
}

void writeDirectly(const std::wstring& name, const WriteText& write) {
  NoOutput nothing;
  write(nothing);
  File file(name, GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
  if (!file.isOpen()) failWith(QFileDevice::OpenError);
  if (file.isOnDisk()) file.empty();
  FileOutput output(file);
  write(output);
  if (file.isOnDisk()) file.sync();
  file.close();
}

}  // namespace

FileName fileNameOf(std::string_view hostName) { return fileNameFromNarrow(hostName).toStdWString(); }

bool isLackOfResources(int systemError) {
  constexpr DWORD errors[] = {ERROR_TOO_MANY_OPEN_FILES, ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY,
                              ERROR_DISK_FULL,           ERROR_HANDLE_DISK_FULL,  ERROR_NOT_ENOUGH_QUOTA};
  return std::find(std::begin(errors), std::end(errors), static_cast<DWORD>(systemError)) != std::end(errors);
}

void saveBytes(const FileName& fileName, const WriteText& write) {
  const std::wstring given = fullName(fileName);
  if (given.empty() || given.back() == L'\\') throw FileFailure(QFileDevice::OpenError, ERROR_INVALID_NAME);
  const DWORD attributes = GetFileAttributesW(given.c_str());
  if (exists(attributes) && has(attributes, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY))
    throw FileFailure(QFileDevice::WriteError, ERROR_ACCESS_DENIED);
  const std::wstring name = withoutLinks(given, attributes);
  if (startsWith(name, LR"(\\.\)") || (exists(attributes) && mustNotBeReplaced(name)))
    return writeDirectly(name, write);
  try {
    return replace(name, write);
  } catch (const ReplacementRefused&) {
    if (!exists(attributes)) throw;
  }
  writeDirectly(name, write);
}

FileBytes loadBytes(const FileName& fileName, std::size_t longest) {
  const std::wstring name = fullName(fileName);
  const DWORD attributes = name.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(name.c_str());
  if (!exists(attributes)) return FileBytes(ReadOutcome::Missing);
  if (has(attributes, FILE_ATTRIBUTE_DIRECTORY))
    throw FileFailure(QFileDevice::OpenError, ERROR_ACCESS_DENIED);
  if (startsWith(name, LR"(\\.\)")) throw FileFailure(QFileDevice::OpenError, notARegularFile);
  const File file(name, GENERIC_READ, sharedByAll, OPEN_EXISTING);
  if (!file.isOpen()) failWith(QFileDevice::OpenError);
  if (!file.isOnDisk()) throw FileFailure(QFileDevice::OpenError, notARegularFile);
  const BY_HANDLE_FILE_INFORMATION information = file.information();
  const ULONGLONG size = ULONGLONG{information.nFileSizeHigh} << 32U | information.nFileSizeLow;
  return readAll(file, size, longest);
}

}  // namespace ztcad
