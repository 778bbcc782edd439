#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace ztcad {

/// What one text and one list may hold. Nothing else in a document has a limit but memory, and its depth.
/// Variable only for tests, which lower them.
struct Limits {
  /// UTF-16 units of a text that becomes a QString: Qt 5 counts in int, and a unit takes two bytes. A build
  /// with Qt 6, which could take more, has the same limit.
  std::size_t text = std::numeric_limits<int>::max() / 2 - 64;
  /// Vertices or facets of a list: hosts count them in int32_t.
  std::size_t list = std::numeric_limits<std::int32_t>::max();
  /// Structures of a saved document, each counted as often as it is written: few that are held in several
  /// places may stand for more than any memory holds.
  std::size_t structures = std::numeric_limits<std::int32_t>::max();
};
inline Limits limits;

/// Thrown for a text or list beyond its limit.
class TooLong final : public std::length_error {
 public:
  /// @param message static text
  /// @param at      its start
  TooLong(const char* message, const char* at) : std::length_error(message), m_message(message), m_at(at) {}

  const char* message() const noexcept { return m_message; }
  const char* position() const noexcept { return m_at; }

  static constexpr char text[] = "text too long";
  static constexpr char list[] = "list too long";

 private:
  const char* m_message;
  const char* m_at;
};

}  // namespace ztcad
