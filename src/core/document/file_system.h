#pragma once

#include <algorithm>
#include <cstdint>
#include <exception>
#include <QFileDevice>

#include "../../support/memory_pages.h"
#include "file.h"

/// @file
/// What file.cpp needs from the system, implemented once for POSIX and once for Windows.

namespace ztcad {

/// A file operation failed.
class FileFailure : public std::exception {
 public:
  /// @param code        the kind of operation; becomes `ResourceError` if the system lacks a resource
  /// @param systemError the number that the system gave
  FileFailure(QFileDevice::FileError code, int systemError) : m_code(code), m_systemError(systemError) {}
  /// A failure that the system has no number for.
  FileFailure(QFileDevice::FileError code, const char* message) : m_code(code), m_message(message) {}

  const char* what() const noexcept override { return m_message ? m_message : "a file operation failed"; }
  FileError error() const;

 private:
  QFileDevice::FileError m_code;
  int m_systemError = 0;
  const char* m_message = nullptr;
};

constexpr const char* notARegularFile = "not a regular file";

/// Whether the error number means that space, quota, memory or file handles are used up.
bool isLackOfResources(int systemError);

/// Takes the bytes and does nothing: shows whether a text can be produced.
class NoOutput final : public ByteOutput {
 public:
  void write(std::string_view /*bytes*/) override {}
};

/// Writes a file as `writeTextFile` describes, without regard to line ends and size. Throws `FileFailure`,
/// and what `write` throws.
void saveBytes(const FileName& fileName, const WriteText& write);

/// Reads to the end of an open file, whatever size it is said to have: it may grow meanwhile, and files that
/// a kernel computes have the size 0.
/// @param file has `read(buffer, size)`, which returns the number of bytes read, 0 at the end
template <typename File>
FileBytes readAll(const File& file, std::uintmax_t expected, std::size_t longest) {
  constexpr std::size_t leastGrowth = 65536;
  if (expected > longest) return FileBytes(ReadOutcome::TooLong);
  FileBytes result(ReadOutcome::Done);
  std::size_t capacity = static_cast<std::size_t>(expected) + 1;  // reading one byte less shows the end
  for (std::size_t size = 0; size <= longest; capacity = std::min(2 * capacity + leastGrowth, longest + 1)) {
    result.bytes.resize(capacity);
    while (size < capacity) {
      constexpr std::size_t most = 1 << 20;  // stays in the processor's cache between both steps
      const std::size_t wanted = std::min(capacity - size, most);
      providePages(result.bytes.data() + size, wanted);
      const std::size_t count = file.read(result.bytes.data() + size, wanted);
      if (count == 0) {
        result.bytes.resize(size);
        return result;
      }
      size += count;
    }
  }
  return FileBytes(ReadOutcome::TooLong);
}

/// Reads a file as `readFile` describes. Throws `FileFailure`.
FileBytes loadBytes(const FileName& fileName, std::size_t longest);

}  // namespace ztcad
