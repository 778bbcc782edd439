#pragma once

#include <unistd.h>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

// A document of any size: one mesh, with small elements after it, exactly as a save writes it. It is produced
// piece by piece, so that the process stays small.

using TakeBytes = std::function<void(std::string_view)>;

class LargeDocument {
 public:
  /// @param bytes approximate size
  explicit LargeDocument(std::uint64_t bytes) : m_vertices(1000 + bytes / bytesOfVertex) {}

  std::uint64_t vertices() const { return m_vertices; }
  std::uint64_t facets() const { return 2 * m_vertices; }

  /// Two coordinates are fractions of two, which are exact in six digits.
  std::array<double, 3> vertex(std::uint64_t i) const {
    return {static_cast<double>(i % across) + 0.25, static_cast<double>(i / across % 100000),
            -static_cast<double>(i * 7919 % 10000) - 0.5};
  }
  std::array<std::uint32_t, 3> facet(std::uint64_t i) const {
    const std::uint64_t first = i / 2;
    const std::array<std::uint64_t, 3> even = {first, first + 1, first + across};
    const std::array<std::uint64_t, 3> odd = {first + 1, first + across + 1, first + across};
    std::array<std::uint32_t, 3> corners = {};
    for (std::size_t k = 0; k < corners.size(); ++k)
      corners[k] = static_cast<std::uint32_t>((i % 2 == 0 ? even[k] : odd[k]) % m_vertices);
    return corners;
  }

  /// Writes the document.
  /// @param addition between the last two attributes of the last element; a save omits what it does not know
  void write(const TakeBytes& take, std::string_view addition = {}) const {
    take(
        "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n   <header inform=\"\"/>\n"
        "   <solid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"mesh\">\n      <vertices>\n");
    Pieces pieces(take);
    for (std::uint64_t i = 0; i < m_vertices; ++i) {
      pieces.number(i % across, ".25, ");
      pieces.number(i / across % 100000, ", -");
      pieces.number(i * 7919 % 10000, ".5;\n");
    }
    pieces.text("</vertices>\n      <faces>\n");
    for (std::uint64_t i = 0; i < facets(); ++i) {
      const auto corners = facet(i);
      pieces.number(corners[0], ", ");
      pieces.number(corners[1], ", ");
      pieces.number(corners[2], ";\n");
    }
    pieces.text(
        "</faces>\n   </solid>\n   <structure LCS=\"\" color=\"\" comment=\"\" inform=\"\" name=\"end\">\n");
    for (const char* const name : {"first", "second"})
      pieces.text(
          "      <point center=\"1, 2, 3;\" color=\"\" comment=\"\" inform=\"\" method=\"pointXYZ\" name=\"" +
          std::string(name) + "\"/>\n");
    pieces.text(beforeLast());
    pieces.text(addition);
    pieces.text("method=\"pointXYZ\" name=\"last\"/>\n   </structure>\n</GMD>\n");
    pieces.flush();
  }

  static std::string beforeLast() {
    return "      <point center=\"1, 2, 3;\" color=\"\" comment=\"\" inform=\"\" ";
  }

 private:
  static constexpr std::uint64_t across = 1000;
  static constexpr std::uint64_t bytesOfVertex = 82;  // with two facets, in a document of gigabytes

  /// Collects pieces of a megabyte.
  class Pieces {
   public:
    explicit Pieces(const TakeBytes& take) : m_take(take) { m_bytes.reserve(pieceSize + 100); }

    void number(std::uint64_t number, std::string_view after) {
      std::array<char, 20> digits;
      const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
      m_bytes.append(digits.data(), end);
      text(after);
    }
    void text(std::string_view text) {
      m_bytes += text;
      if (m_bytes.size() >= pieceSize) flush();
    }
    void flush() {
      m_take(m_bytes);
      m_bytes.clear();
    }

   private:
    static constexpr std::size_t pieceSize = 1 << 20;
    const TakeBytes& m_take;
    std::string m_bytes;
  };

  const std::uint64_t m_vertices;
};

/// A file that is written or read piece by piece.
class PiecewiseFile {
 public:
  PiecewiseFile(const std::string& name, const char* mode) : m_file(std::fopen(name.c_str(), mode)) {
    if (!m_file) throw std::runtime_error("cannot open " + name);
  }
  PiecewiseFile(const PiecewiseFile&) = delete;
  PiecewiseFile& operator=(const PiecewiseFile&) = delete;
  ~PiecewiseFile() { std::fclose(m_file); }

  void write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) fail();
  }
  /// Waits until the file is on the disk.
  void sync() {
    if (std::fflush(m_file) != 0 || ::fsync(::fileno(m_file)) != 0) fail();
  }
  /// Fills a piece; false at the end of the file.
  bool read(std::string& piece) { return std::fread(piece.data(), 1, piece.size(), m_file) == piece.size(); }
  /// Whether the file goes on with these bytes.
  bool goesOnWith(std::string_view bytes) {
    m_read.resize(bytes.size());
    return std::fread(m_read.data(), 1, m_read.size(), m_file) == m_read.size() && m_read == bytes;
  }
  bool isAtEnd() { return std::fgetc(m_file) == EOF; }

 private:
  [[noreturn]] static void fail() { throw std::runtime_error("cannot write a file: the disk may be full"); }

  std::FILE* m_file;
  std::string m_read;
};
