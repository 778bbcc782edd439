#include "mixed_document.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace benchmarks {

namespace {

/// A solid of the arm: numbers of its vertices and facets.
struct Sizes {
  int vertices;
  int facets;
};
constexpr Sizes solids[] = {{102, 200}, {152, 300}, {152, 300}, {152, 300}, {152, 300},
                            {152, 300}, {102, 200}, {102, 200}, {102, 200}};
constexpr int points = 12;
constexpr int mipElements = 4;

/// Writes one arm. The seed is fixed: every run gets the same arm.
class Arm {
 public:
  std::string text() {
    m_text =
        "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n"
        "   <header majorVersion=\"2\" minorVersion=\"1\" producerName=\"benchmark\" inform=\"arm\"/>\n"
        "   <structure name=\"arm\" comment=\"\" inform=\"robot\" color=\"\" "
        "LCS=\"CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1\">\n";
    int index = 0;
    for (const Sizes& sizes : solids)
      addDetail(index++, sizes);
    for (int i = 0; i < points; ++i)
      addPoint(i);
    for (int i = 0; i < mipElements; ++i)
      addMipElement(i);
    return m_text + "   </structure>\n</GMD>\n";
  }

 private:
  void addDetail(int index, const Sizes& sizes) {
    const std::string name = "arm_link" + std::to_string(index);
    m_text += "      <detail name=\"" + name + "\" comment=\"\" inform=\"\" color=\"\" LCS=\"CS" + turned() +
              "\" MIP=\"MIP" + numbers(10) + "\">\n         <solid name=\"" + name +
              "_0\" comment=\"\" inform=\"\" color=\"RGB, 180, 180, 190\" visible=\"true\" "
              "method=\"triangulation\" LCS=\"CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1\">\n"
              "            <vertices>\n";
    for (int i = 0; i < sizes.vertices; ++i)
      m_text += number() + ", " + number() + ", " + number() + ";\n";
    m_text += "</vertices>\n            <faces>\n";
    for (int i = 0; i < sizes.facets; ++i)
      m_text += corner(sizes) + ", " + corner(sizes) + ", " + corner(sizes) + ";\n";
    m_text += "</faces>\n         </solid>\n      </detail>\n";
  }

  void addPoint(int index) {
    m_text += "      <point name=\"arm_joint" + std::to_string(index) +
              "\" comment=\"revolute\" inform=\"\" color=\"\" method=\"pointXYZ\" center=\"" + number() +
              ", 0, " + number() + ";\"/>\n";
  }

  void addMipElement(int index) {
    m_text += "      <elementMIP name=\"arm_tool" + std::to_string(index) +
              "\" comment=\"\" inform=\"\" color=\"\" method=\"MIP\" LCS=\"CS" + turned() +
              "\" MIP=\"MIP, 0.015" + numbers(9) + "\"/>\n";
  }

  /// The numbers of a coordinate system.
  std::string turned() {
    return numbers(3) + ", 0.707107, 0.707107, -8.65956e-17, 0.707107, -0.707107, 8.65956e-17, 0, 0, -1";
  }

  std::string numbers(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += ", " + number();
    return text;
  }

  /// Metres, with six digits; some are almost 0.
  std::string number() {
    constexpr double range = 0.16;
    double value =
        range * (2 * static_cast<double>(m_random()) / static_cast<double>(std::mt19937_64::max()) - 1);
    if (m_random() % 128 == 0) value *= 1e-5;
    char text[32] = {};
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
  }

  std::string corner(const Sizes& sizes) {
    return std::to_string(m_random() % static_cast<std::uint64_t>(sizes.vertices));
  }

  std::string m_text;
  std::mt19937_64 m_random{20200202};
};

/// Where everything after the header starts. Throws if the text has no such place.
std::size_t startOfContent(std::string_view text) {
  const std::size_t header = text.find("<header");
  const std::size_t end = text.find("/>", header);
  if (header == std::string_view::npos || end == std::string_view::npos)
    throw std::runtime_error("the mixed document has no header");
  return end + 2;
}

}  // namespace

std::string textOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error(file + " cannot be read");
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string generatedArm() { return Arm().text(); }

std::string repeated(const std::string& text, std::size_t copies) {
  constexpr std::string_view nameStart = " name=\"";
  const std::string_view whole = text;
  const std::size_t start = startOfContent(whole);
  const std::size_t end = whole.rfind("</GMD>");
  if (end == std::string_view::npos || end < start)
    throw std::runtime_error("the mixed document has no content");
  std::vector<std::string_view> pieces;  // each except the last one is followed by a name
  std::size_t at = start;
  for (std::size_t name = 0; (name = whole.find(nameStart, at)) < end; at = name + nameStart.size())
    pieces.push_back(whole.substr(at, name + nameStart.size() - at));
  std::string all(whole.substr(0, start));
  all.reserve((copies + 1) * (text.size() + pieces.size() * 8));
  for (std::size_t copy = 1; copy <= copies; ++copy) {
    const std::string prefix = std::to_string(copy) + " ";
    for (const std::string_view piece : pieces)
      all.append(piece).append(prefix);
    all.append(whole.substr(at, end - at));
  }
  return all.append(whole.substr(end));
}

std::size_t usualCopies(const std::string& text) {
  constexpr std::size_t bytes = 100000000;
  return std::clamp<std::size_t>(bytes / std::max<std::size_t>(text.size(), 1), 1, 1000);
}

}  // namespace benchmarks
