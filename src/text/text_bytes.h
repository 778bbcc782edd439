#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace ztcad {

/// The bytes of a text of any size. Unlike a QByteArray it counts in `std::size_t`, and unlike a
/// `std::string` it leaves new bytes uninitialised, so that a file can be read into it directly.
class TextBytes {
 public:
  /// Empty.
  TextBytes() = default;
  /// What was moved from is empty.
  /// @{
  TextBytes(TextBytes&& other) noexcept
      : m_bytes(std::move(other.m_bytes)), m_size(std::exchange(other.m_size, 0)) {}
  TextBytes& operator=(TextBytes&& other) noexcept {
    m_bytes = std::move(other.m_bytes);
    m_size = std::exchange(other.m_size, 0);
    return *this;
  }
  /// @}
  ~TextBytes() = default;
  /// A copy. Throws `std::bad_alloc`.
  explicit TextBytes(std::string_view bytes) {
    resize(bytes.size());
    if (!bytes.empty()) std::memcpy(data(), bytes.data(), bytes.size());
  }

  std::string_view view() const { return {m_bytes.get(), m_size}; }
  std::size_t size() const { return m_size; }
  char* data() { return m_bytes.get(); }

  /// Keeps the bytes that there are. If memory runs out (`std::bad_alloc`), nothing changes.
  void resize(std::size_t size) {
    // large memory is moved by the system, which copies nothing
    void* const resized = size > 0 ? std::realloc(m_bytes.get(), size) : nullptr;
    if (resized) {
      static_cast<void>(m_bytes.release());
      m_bytes.reset(static_cast<char*>(resized));
    } else if (size > m_size) {
      throw std::bad_alloc();
    }
    m_size = size;
  }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };

  std::unique_ptr<char, Free> m_bytes;
  std::size_t m_size = 0;
};

}  // namespace ztcad
