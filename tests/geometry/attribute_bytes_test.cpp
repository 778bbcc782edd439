#include <gtest/gtest.h>
#include <cstring>
#include <string>
#include <vector>

#include "differential/dice.h"
#include "differential/plain_number_text.h"
#include "geometry/mip_element.h"
#include "geometry/point.h"
#include "node_text.h"
#include "random_seed.h"
#include "xml/plain_xml.h"

// Elements read from bytes, whose attributes are parsed where they lie, and from a tree, which has
// characters.

namespace {

std::string quoted(std::string text, Dice& dice) {
  // no XML, not even as references
  for (char& c : text)
    if (c == '\v' || c == '\f') c = ' ';
  std::string value;
  for (const char c : text) {
    if (c >= ' ' && !dice.oneIn(200))
      value += c;
    else
      value += "&#" + std::to_string(static_cast<int>(c)) + ';';
  }
  return '"' + value + '"';
}

std::string attribute(const char* name, const std::string& text, Dice& dice) {
  return dice.oneIn(10) ? std::string() : std::string(" ") + name + '=' + quoted(text, dice);
}

std::string anyName(Dice& dice) {
  const char* const names[] = {"",
                               "P1",
                               "exactly15______",
                               "exactly 16______",
                               "of thirty-one characters _____1",
                               "of thirty-two characters _____12",
                               "\xD0\xAF"};
  return dice.pick(names);
}

std::string anyElement(const char* tag, const char* usualMethod, Dice& dice) {
  const char* const words[] = {"MIP", "mip", "MIPS", ""};
  const char* const methods[] = {"sphere", "polyline", "", "odd"};
  const char* const visibles[] = {"true", "false", "TRUE", "1", "0", "x", ""};
  std::string xml = std::string("<") + tag;
  const std::string name = anyName(dice);
  if (!dice.oneIn(10)) xml += " name=\"" + name + '"';
  xml += attribute("center", plain_number_text::list(dice, "", 3, dice.oneIn(2)), dice);
  xml += attribute("color", plain_number_text::list(dice, "RGB", 3, true), dice);
  xml += attribute("MIP",
                   plain_number_text::list(dice, dice.oneIn(6) ? dice.pick(words) : "MIP", 10, dice.oneIn(2)),
                   dice);
  xml += attribute("LCS", plain_number_text::list(dice, "CS", 12, dice.oneIn(2)), dice);
  xml += attribute("visible", dice.pick(visibles), dice);
  xml += attribute("method", dice.oneIn(4) ? dice.pick(methods) : usualMethod, dice);
  return xml + "/>";
}

template <typename Element>
std::string outcomeOf(const Element& element, bool result, bool fault) {
  return std::string(result ? "read " : "refused ") + (fault ? "fault " : "") +
         (element.readOk() ? "ok " : "") + written(element) + text(element, true);
}

/// Reads the element both ways. The text of numbers has six digits; `numbers` returns them all.
template <typename Element, typename Numbers>
bool readsAlike(const std::string& xml, Numbers&& numbers) {
  Element fromTree;
  bool treeFault = false;
  const bool treeResult = fromTree.readXml(ParsedXml(xml).root, treeFault);
  Element fromBytes;
  bool fault = false;
  bool result = false;
  EXPECT_TRUE(ztcad::readPlainXml(xml, ztcad::XmlBytes::Utf8, [&](const ztcad::ElementView& view) {
    result = fromBytes.read(view, fault);
  })) << xml;
  EXPECT_EQ(outcomeOf(fromBytes, result, fault), outcomeOf(fromTree, treeResult, treeFault)) << xml;
  const std::vector<double> read = numbers(fromBytes);
  const std::vector<double> expected = numbers(fromTree);
  EXPECT_EQ(read.size(), expected.size()) << xml;
  if (read.size() == expected.size() && !read.empty()) {
    EXPECT_EQ(std::memcmp(read.data(), expected.data(), read.size() * sizeof(double)), 0) << xml;
  }
  return treeResult;
}

TEST(AttributeBytesDifferential, PointsAreReadAsFromATree) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(20000);
  int succeeded = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i)
    succeeded += readsAlike<ztCAD_Point>(anyElement("point", "pointXYZ", dice), [](const ztCAD_Point& point) {
      return std::vector<double>{point.center().x(), point.center().y(), point.center().z()};
    });
  EXPECT_GT(succeeded, rounds / 10);
  EXPECT_LT(succeeded, rounds - rounds / 10);
}

TEST(AttributeBytesDifferential, MassInertiaElementsAreReadAsFromATree) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(20000);
  int succeeded = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i)
    succeeded += readsAlike<ztCAD_ElementMIP>(
        anyElement("elementMIP", "MIP", dice), [](const ztCAD_ElementMIP& element) {
          return element.record() ? element.record()->values() : std::vector<double>();
        });
  EXPECT_GT(succeeded, rounds / 30);
  EXPECT_LT(succeeded, rounds - rounds / 10);
}

// What is absent leaves what was read before.
TEST(AttributeBytesDifferential, AnElementReadTwiceIsThatOfATree) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(5000);
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    ztCAD_Point fromTree;
    ztCAD_Point fromBytes;
    for (int pass = 0; pass < 3; ++pass) {
      const std::string xml = anyElement("point", "pointXYZ", dice);
      bool treeFault = false;
      bool fault = false;
      const bool treeResult = fromTree.readXml(ParsedXml(xml).root, treeFault);
      bool result = false;
      ASSERT_TRUE(ztcad::readPlainXml(xml, ztcad::XmlBytes::Utf8, [&](const ztcad::ElementView& view) {
        result = fromBytes.read(view, fault);
      })) << xml;
      ASSERT_EQ(outcomeOf(fromBytes, result, fault), outcomeOf(fromTree, treeResult, treeFault)) << xml;
      if (dice.oneIn(4)) fromTree.property().attributes();
      if (dice.oneIn(4)) fromBytes.property().attributes();
      if (dice.oneIn(4)) fromBytes.method();
    }
  }
}

}  // namespace
