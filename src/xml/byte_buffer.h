#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace ztcad {

/// Bytes that grow at their end. Unlike a `std::string` it leaves new bytes uninitialised, so that text can
/// be written into it directly.
class ByteBuffer {
 public:
  std::size_t size() const { return m_size; }
  std::string_view bytes() const { return {m_bytes.get(), m_size}; }
  void clear() { m_size = 0; }

  /// Room for `count` bytes after the end, valid until the next call. `commit` adds those that were written.
  char* room(std::size_t count) {
    if (m_capacity - m_size < count) grow(count);
    return m_bytes.get() + m_size;
  }
  /// @param end the end of what was written into the room
  void commit(const char* end) { m_size = static_cast<std::size_t>(end - m_bytes.get()); }

  void append(std::string_view bytes) {
    char* const out = room(bytes.size());
    if (bytes.size() <= 16)
      copyFew(bytes.data(), bytes.size(), out);
    else
      std::memcpy(out, bytes.data(), bytes.size());
    m_size += bytes.size();
  }
  void append(std::size_t count, char byte) {
    std::memset(room(count), byte, count);
    m_size += count;
  }
  ByteBuffer& operator+=(std::string_view bytes) {
    append(bytes);
    return *this;
  }
  ByteBuffer& operator+=(char byte) {
    *room(1) = byte;
    ++m_size;
    return *this;
  }

 private:
  /// Copies at most sixteen bytes, in line: twice as quick as a call, and most pieces of a document are this
  /// small.
  static void copyFew(const char* from, std::size_t count, char* to) {
    if (count >= 8) {
      std::memcpy(to, from, 8);
      std::memcpy(to + count - 8, from + count - 8, 8);
    } else if (count >= 4) {
      std::memcpy(to, from, 4);
      std::memcpy(to + count - 4, from + count - 4, 4);
    } else {
      for (std::size_t i = 0; i < count; ++i)
        to[i] = from[i];
    }
  }

  void grow(std::size_t count) {
    constexpr std::size_t smallest = 256;
    const std::size_t capacity = std::max({smallest, 2 * m_capacity, m_size + count});
    std::unique_ptr<char[]> bytes(new char[capacity]);  // not zeroed
    if (m_size > 0) std::memcpy(bytes.get(), m_bytes.get(), m_size);
    m_bytes = std::move(bytes);
    m_capacity = capacity;
  }

  std::unique_ptr<char[]> m_bytes;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

}  // namespace ztcad
