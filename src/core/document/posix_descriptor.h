#pragma once

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "file_system.h"

namespace ztcad {

/// Throws for the error in `errno`.
[[noreturn]] inline void failWith(QFileDevice::FileError code) { throw FileFailure(code, errno); }

/// Repeats a system call as long as signals interrupt it.
template <typename Call>
auto uninterrupted(Call&& call) {
  while (true) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

/// Owns an open file or folder.
class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : m_number(number) {}
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (m_number >= 0) ::close(m_number);
  }

  int number() const { return m_number; }

  struct stat status() const {
    struct stat status = {};
    if (::fstat(m_number, &status) != 0) failWith(QFileDevice::OpenError);
    return status;
  }

  /// Number of bytes read, at least 1 unless the file has ended.
  std::size_t read(char* bytes, std::size_t size) const {
    const ssize_t count =
        uninterrupted([&] { return ::read(m_number, bytes, std::min(size, largestPiece)); });
    if (count < 0) failWith(QFileDevice::ReadError);
    return static_cast<std::size_t>(count);
  }

  void write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = uninterrupted(
          [&] { return ::write(m_number, bytes.data(), std::min(bytes.size(), largestPiece)); });
      if (count < 0) failWith(QFileDevice::WriteError);
      if (count == 0) throw FileFailure(QFileDevice::WriteError, EIO);
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  /// Waits until the bytes are on the disk. Some file systems find out only now that there is no space.
  void sync() const {
    if (uninterrupted([this] { return ::fsync(m_number); }) != 0) failWith(QFileDevice::WriteError);
  }

  void close() {
    // Interrupted or not, the descriptor is closed.
    if (::close(std::exchange(m_number, -1)) != 0 && errno != EINTR) failWith(QFileDevice::WriteError);
  }

 private:
  static constexpr std::size_t largestPiece = 1U << 30U;  // systems limit one call to about twice that

  int m_number;
};

/// Passes the pieces of a text to a file.
class DescriptorOutput final : public ByteOutput {
 public:
  explicit DescriptorOutput(const Descriptor& file) : m_file(file) {}
  void write(std::string_view bytes) override { m_file.write(bytes); }

 private:
  const Descriptor& m_file;
};

}  // namespace ztcad
