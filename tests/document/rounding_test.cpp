#include <gtest/gtest.h>
#include <cfenv>
#include <cmath>
#include <string>

#include "differential/dice.h"
#include "random_seed.h"
#include "sample_documents.h"

// Numbers are read and written in the same way whatever rounding mode the host has set.

namespace {

/// A rounding mode of the host for a scope.
class HostRounding {
 public:
  explicit HostRounding(int mode) { EXPECT_EQ(std::fesetround(mode), 0); }
  ~HostRounding() { std::fesetround(FE_TONEAREST); }
  HostRounding(const HostRounding&) = delete;
  HostRounding& operator=(const HostRounding&) = delete;
};

/// Of any length: short ones are read by one division, longer ones in other ways.
std::string randomDecimal(Dice& dice) {
  std::string digits = std::to_string(dice.bits());
  digits.resize(2 + dice.bits() % (digits.size() - 2));
  const std::string decimal = digits.substr(0, 1) + '.' + digits.substr(1);
  return dice.oneIn(4) ? decimal + 'e' + std::to_string(dice.roll(40) - 20) : decimal;
}

std::string randomDocument(Dice& dice) {
  std::string lines;
  for (int i = 0; i < 200; ++i)
    lines += "<point name='P' center='" + randomDecimal(dice) + ',' + randomDecimal(dice) + ',' +
             randomDecimal(dice) + "'/>";
  return documentWith(lines + "<line name='L' method='polyline'><vertices>" + randomDecimal(dice) +
                      ",0.1,0.2</vertices></line>");
}

std::string coordinatesOf(const ztCAD_GMDDocument& document) {
  std::string bits;
  for (const ztCAD_Point& point : document.content().points)
    for (const double value : {point.center().x(), point.center().y(), point.center().z()})
      bits.append(reinterpret_cast<const char*>(&value), sizeof value);
  return bits;
}

/// What a document is in memory and in writing.
struct Results {
  std::string read;
  std::string parsed;
  std::string saved;
  std::string text;
  std::string xml;
};

Results resultsOf(const std::string& xml) {
  ztCAD_GMDDocument document("");
  EXPECT_EQ(loadBytes(document, xml).code, 0);
  ztCAD_GMDDocument parsed("");
  EXPECT_TRUE(loadString(parsed, xml).parsed);
  return {coordinatesOf(document), coordinatesOf(parsed), savedBytes(document), textOf(document),
          document.xmlText()};
}

TEST(Rounding, ReadsAndWritesAsIfToNearest) {
  Dice dice(randomSeed());
  for (int round = 0; round < 20; ++round) {
    const std::string xml = randomDocument(dice);
    const Results expected = resultsOf(xml);
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
      const HostRounding host(mode);
      const Results results = resultsOf(xml);
      EXPECT_TRUE(results.read == expected.read) << mode;
      EXPECT_TRUE(results.parsed == expected.parsed) << mode;
      EXPECT_TRUE(results.saved == expected.saved) << mode;
      EXPECT_TRUE(results.text == expected.text) << mode;
      EXPECT_TRUE(results.xml == expected.xml) << mode;
      EXPECT_EQ(std::fegetround(), mode);
    }
  }
}

TEST(Rounding, FlagsOfTheHostAreKept) {
  const std::string xml = documentWith("<point name='P' center='0.1,1e999,1e-320'/>");
  const TemporaryFiles files;
  const std::string fileName = files.path("a.xml");
  ztCAD_GMDDocument document("");
  for (const int flags : {0, FE_INVALID, FE_INEXACT, FE_ALL_EXCEPT}) {
    std::feclearexcept(FE_ALL_EXCEPT);
    std::feraiseexcept(flags);
    loadString(document, xml);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), flags);
    document.saveToFile(fileName);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), flags);
  }
  std::feclearexcept(FE_ALL_EXCEPT);
}

#if defined(__GLIBC__)
TEST(Rounding, TrapsOfTheHostAreNotSprung) {
  const std::string xml = documentWith("<point name='P' center='0.1,1e999,1e-320'/>");
  const TemporaryFiles files;
  const std::string fileName = files.path("a.xml");
  ztCAD_GMDDocument document("");
  std::feclearexcept(FE_ALL_EXCEPT);
  ASSERT_NE(feenableexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW | FE_INEXACT), -1);
  const StringLoad load = loadString(document, xml);
  document.saveToFile(fileName);
  const int traps = fedisableexcept(FE_ALL_EXCEPT);
  EXPECT_NE(traps, 0) << "the traps of the host are restored";
  EXPECT_TRUE(load.parsed);
  EXPECT_NE(bytesOf(fileName), "");
}
#endif

}  // namespace
