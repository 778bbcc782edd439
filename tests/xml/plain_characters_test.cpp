#include "xml/plain_characters.h"

#include <gtest/gtest.h>
#include <cstddef>
#include <string>
#include <vector>

namespace {

/// Bytes that are no longer than they are, at some distance from an aligned address: the sanitizers find what
/// is read beyond them.
class Bytes {
 public:
  Bytes(const std::string& text, std::size_t offset) : m_offset(offset), m_bytes(offset, '#') {
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
  }
  const char* begin() const { return m_bytes.data() + m_offset; }

 private:
  const std::size_t m_offset;
  std::vector<char> m_bytes;
};

std::string textOfSize(std::size_t size) {
  std::string text;
  for (std::size_t i = 0; i < size; ++i)
    text += static_cast<char>(i * 37 + i / 16);
  return text;
}

TEST(CommonPrefix, IsAllOfEqualTexts) {
  for (std::size_t size = 0; size < 100; ++size) {
    for (const std::size_t offset : {0U, 1U, 7U, 15U}) {
      const Bytes one(textOfSize(size), 0);
      const Bytes other(textOfSize(size), offset);
      const auto length = static_cast<std::ptrdiff_t>(size);
      EXPECT_EQ(ztcad::commonPrefix(one.begin(), other.begin(), length), length);
    }
  }
}

TEST(CommonPrefix, EndsAtTheFirstDifference) {
  for (std::size_t size = 1; size < 70; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      for (const int difference : {1, 0x80, 0xFF}) {
        std::string changed = textOfSize(size);
        changed[place] = static_cast<char>(changed[place] ^ difference);
        const Bytes one(textOfSize(size), 0);
        const Bytes other(changed, size % 16);
        ASSERT_EQ(ztcad::commonPrefix(one.begin(), other.begin(), static_cast<std::ptrdiff_t>(size)),
                  static_cast<std::ptrdiff_t>(place))
            << size;
        changed.back() = static_cast<char>(~changed.back());  // another difference after it
        const Bytes last(changed, 0);
        ASSERT_EQ(ztcad::commonPrefix(last.begin(), one.begin(), static_cast<std::ptrdiff_t>(place)),
                  static_cast<std::ptrdiff_t>(place))
            << size;
      }
    }
  }
}

TEST(CommonPrefix, DoesNotLookBeyondTheSize) {
  const std::string text = textOfSize(64);
  for (std::ptrdiff_t size = 0; size <= 64; ++size)
    EXPECT_EQ(ztcad::commonPrefix(text.data(), text.data(), size), size);
}

TEST(EqualBytes, AreThoseOfMemcmp) {
  for (std::size_t size = 0; size < 40; ++size) {
    const std::string text = textOfSize(size);
    EXPECT_TRUE(ztcad::equalBytes(Bytes(text, 0).begin(), Bytes(text, 3).begin(), size));
    for (std::size_t place = 0; place < size; ++place) {
      std::string changed = text;
      changed[place] = static_cast<char>(changed[place] + 1);
      EXPECT_FALSE(ztcad::equalBytes(Bytes(text, 5).begin(), Bytes(changed, 0).begin(), size))
          << size << place;
    }
  }
}

}  // namespace
