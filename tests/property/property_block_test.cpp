#include "property/property_block.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_cmnProperty*, ztCAD_INode*>);
static_assert(!std::is_convertible_v<ztCAD_cmnProperty*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_cmnProperty*, ztCAD_StateCorrect*>);

const char* const onesXml = R"(LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1")";
const char* const onesText = "CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1";

std::vector<double> ones() { return std::vector<double>(12, 1.0); }

ztCAD_cmnProperty fullBlock() {
  ztCAD_cmnProperty block;
  block.attributes().setName("P1");
  block.attributes().setComment("c");
  block.attributes().setInform("i");
  block.showable().setColor({255, 0, 0});
  block.showable().setVisible(ztCAD_Visible(true));
  block.setLcs(ztCAD_LCS(true, ones()));
  return block;
}

const char* const fullText =
    "attr=(name=P1, comment=c, inform=i) ,color=RGB, 255, 0, 0visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1";
const char* const fullXml =
    R"(<e LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" color="RGB, 255, 0, 0" comment="c" inform="i" name="P1" visible="true"/>)";
const char* const emptyText = "attr=(name=, comment=, inform=) ,color=visible=";

TEST(PropertyBlock, IsEmptyByDefault) {
  const ztCAD_cmnProperty block;
  EXPECT_EQ(onlyText(block), emptyText);
  EXPECT_FALSE(block.hasLCS());
  EXPECT_EQ(block.lcs(), std::nullopt);
  EXPECT_FALSE(block.readOk());
  EXPECT_FALSE(block.wasRead());
}

TEST(PropertyBlock, AnEmptyBlockWritesOnlyDescriptionAndColor) {
  EXPECT_EQ(written(ztCAD_cmnProperty()), R"(<e color="" comment="" inform="" name=""/>)");
}

TEST(PropertyBlock, TextJoinsItsPartsWithASpaceAndAComma) { EXPECT_EQ(onlyText(fullBlock()), fullText); }

TEST(PropertyBlock, WritesAllItsParts) { EXPECT_EQ(written(fullBlock()), fullXml); }

TEST(PropertyBlock, ReadsWhatItWrites) { EXPECT_EQ(roundTrip<ztCAD_cmnProperty>(fullXml), fullXml); }

TEST(PropertyBlock, WritesNoAttributeWithoutACoordinateSystem) {
  ztCAD_cmnProperty block = fullBlock();
  block.setLcs(std::nullopt);
  EXPECT_FALSE(block.hasLCS());
  EXPECT_EQ(written(block), R"(<e color="RGB, 255, 0, 0" comment="c" inform="i" name="P1" visible="true"/>)");
  EXPECT_EQ(onlyText(block),
            "attr=(name=P1, comment=c, inform=i) ,color=RGB, 255, 0, 0visible=visible=truetrue");
}

TEST(PropertyBlock, AnEmptyCoordinateSystemIsWrittenAsAnEmptyAttribute) {
  ztCAD_cmnProperty block;
  block.setLcs(ztCAD_LCS());
  EXPECT_TRUE(block.hasLCS());
  EXPECT_EQ(written(block), R"(<e LCS="" color="" comment="" inform="" name=""/>)");
  EXPECT_EQ(onlyText(block), emptyText);
}

TEST(PropertyBlock, AModelSystemIsWrittenUnderItsOwnName) {
  ztCAD_cmnProperty block;
  block.setLcs(ztCAD_LCS(false, {1}));
  EXPECT_EQ(written(block), R"(<e MCS="CS, 1" color="" comment="" inform="" name=""/>)");
}

TEST(PropertyBlock, TheOrderOfAttributesDoesNotMatter) {
  const std::string forward =
      std::string(R"(<e name="P1" comment="c" inform="i" color="RGB,255,0,0" visible="1" )") + onesXml + "/>";
  const std::string backward =
      std::string("<e ") + onesXml + R"( visible="1" color="RGB,255,0,0" inform="i" comment="c" name="P1"/>)";
  EXPECT_EQ(roundTrip<ztCAD_cmnProperty>(forward), fullXml);
  EXPECT_EQ(roundTrip<ztCAD_cmnProperty>(backward), fullXml);
}

TEST(PropertyBlock, KeepsNonAsciiLettersQuotesAndPlaceholders) {
  for (const std::string xml :
       {R"(<e color="" comment="Ось Ё" inform="№" name="Точка"/>)",
        R"(<e color="" comment="it's &quot;so&quot;" inform="&lt;&amp;&gt;" name="&quot;A&quot;"/>)",
        R"(<e color="" comment="%1 %2" inform="%L1" name="%1"/>)",
        R"(<e color="" comment="a🙂b" inform="𝄞" name="🙂"/>)"})
    EXPECT_EQ(roundTrip<ztCAD_cmnProperty>(xml), xml);
}

TEST(PropertyBlock, TextDoesNotSubstitutePlaceholders) {
  ztCAD_cmnProperty block;
  block.attributes().setName("%1");
  block.attributes().setComment("%2 ,color=");
  EXPECT_EQ(onlyText(block), "attr=(name=%1, comment=%2 ,color=, inform=) ,color=visible=");
}

// ----------------------------------------------------------------------------------------- outcome of a read

struct OutcomeRow {
  const char* name;
  const char* xml;
  bool ok;
};
std::ostream& operator<<(std::ostream& out, const OutcomeRow& row) { return out << row.name; }

const OutcomeRow outcomeRows[] = {
    {"Nothing", "<e/>", false},
    {"OnlyName", R"(<e name="P1"/>)", true},
    {"EmptyName", R"(<e name=""/>)", true},
    {"NoName", R"(<e comment="c" inform="i" color="RGB,1,2,3" visible="true"/>)", false},
    {"NameOfAChild", R"(<e><e name="P1"/></e>)", false},
    {"EmptyColor", R"(<e name="P1" color=""/>)", true},
    {"Color", R"(<e name="P1" color="RGB,1,2,3"/>)", true},
    {"ColorWithTooFewParts", R"(<e name="P1" color="RGB, 1, 2"/>)", true},
    {"ColorWithoutNumbers", R"(<e name="P1" color="RGB, a, b, c"/>)", true},
    {"ColorInLowerCase", R"(<e name="P1" color="rgb, 1, 2, 3"/>)", false},
    {"NoNameAndInvalidColor", R"(<e color="rgb, 1, 2, 3"/>)", false},
    {"UnusualVisibility", R"(<e name="P1" visible="perhaps"/>)", true},
    {"EmptyCoordinateSystem", R"(<e name="P1" LCS=""/>)", true},
    {"CoordinateSystemOfElevenValues", R"(<e name="P1" LCS="CS,1,2,3,4,5,6,7,8,9,10,11"/>)", true},
    {"CoordinateSystem", R"(<e name="P1" LCS="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)", true},
    {"CoordinateSystemWithoutName", R"(<e LCS="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)", false},
    {"ModelSystem", R"(<e name="P1" MCS="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)", true},
    {"UnknownAttributes", R"(<e name="P1" foo="1" center="x"/>)", true},
};

class PropertyBlockReading : public testing::TestWithParam<OutcomeRow> {};

TEST_P(PropertyBlockReading, FailsOnlyWithoutANameOrOnAnInvalidColor) {
  ztCAD_cmnProperty block;
  EXPECT_EQ(read(block, GetParam().xml), GetParam().ok);
  EXPECT_EQ(block.readOk(), GetParam().ok);
  EXPECT_TRUE(block.wasRead());
}

TEST_P(PropertyBlockReading, TheStateReflectsTheLastRead) {
  ztCAD_cmnProperty block;
  block.setReadOk(!GetParam().ok);
  read(block, GetParam().xml);
  EXPECT_EQ(block.readOk(), GetParam().ok);
}

TEST_P(PropertyBlockReading, ClearsTheFault) {
  ztCAD_cmnProperty block;
  EXPECT_FALSE(faultAfterReading(block, GetParam().xml, true));
  EXPECT_FALSE(faultAfterReading(block, GetParam().xml, false));
}

INSTANTIATE_TEST_SUITE_P(PropertyBlock, PropertyBlockReading, testing::ValuesIn(outcomeRows),
                         [](const auto& row) { return row.param.name; });

TEST(PropertyBlock, AFailedReadTakesTheValidAttributes) {
  ztCAD_cmnProperty withoutName;
  EXPECT_FALSE(
      read(withoutName, std::string(R"(<e comment="c" color="RGB,1,2,3" visible="0" )") + onesXml + "/>"));
  EXPECT_EQ(onlyText(withoutName),
            std::string("attr=(name=, comment=c, inform=) ,color=RGB, 1, 2, 3visible=visible=falsefalse") +
                onesText);
  ztCAD_cmnProperty invalidColor;
  EXPECT_FALSE(read(invalidColor, std::string(R"(<e name="P1" color="red" visible="0" )") + onesXml + "/>"));
  EXPECT_EQ(onlyText(invalidColor),
            std::string("attr=(name=P1, comment=, inform=) ,color=visible=visible=falsefalse") + onesText);
}

// ----------------------------------------------------------------------------------------- coordinate system

TEST(PropertyBlock, ReadsALocalSystem) {
  const auto block = readFrom<ztCAD_cmnProperty>(std::string(R"(<e name="P1" )") + onesXml + "/>");
  ASSERT_TRUE(block.hasLCS());
  EXPECT_EQ(block.lcs()->values(), ones());
  EXPECT_TRUE(block.lcs()->isLocal());
}

TEST(PropertyBlock, IgnoresAModelSystem) {
  const auto block = readFrom<ztCAD_cmnProperty>(R"(<e name="P1" MCS="CS,1,1,1,1,1,1,1,1,1,1,1,1"/>)");
  EXPECT_FALSE(block.hasLCS());
  EXPECT_EQ(written(block), R"(<e color="" comment="" inform="" name="P1"/>)");
}

TEST(PropertyBlock, ReadReplacesTheSystemAndItsKind) {
  ztCAD_cmnProperty block;
  block.setLcs(ztCAD_LCS(false, {7, 8}));
  EXPECT_TRUE(read(block, std::string(R"(<e name="P1" )") + onesXml + "/>"));
  EXPECT_EQ(block.lcs()->values(), ones()) << "no value of the previous system may remain";
  EXPECT_TRUE(block.lcs()->isLocal());
}

TEST(PropertyBlock, AFailedOrAbsentSystemKeepsThePreviousOne) {
  for (const char* xml : {R"(<e name="P1"/>)", R"(<e name="P1" LCS=""/>)", R"(<e name="P1" LCS="CS, 1, 2"/>)",
                          R"(<e name="P1" MCS="CS,1,1,1,1,1,1,1,1,1,1,1,1"/>)"}) {
    ztCAD_cmnProperty block;
    block.setLcs(ztCAD_LCS(false, {7, 8}));
    EXPECT_TRUE(read(block, xml)) << xml;
    ASSERT_TRUE(block.hasLCS()) << xml;
    EXPECT_EQ(block.lcs()->values(), (std::vector<double>{7, 8})) << xml;
    EXPECT_FALSE(block.lcs()->isLocal()) << xml;
  }
}

TEST(PropertyBlock, ReadingTwiceKeepsTwelveValues) {
  ztCAD_cmnProperty block;
  for (int i = 0; i < 2; ++i)
    EXPECT_TRUE(read(block, std::string(R"(<e name="P1" )") + onesXml + "/>"));
  EXPECT_EQ(block.lcs()->values().size(), 12u);
}

TEST(PropertyBlock, ReturnsACopyOfTheSystem) {
  ztCAD_cmnProperty block = fullBlock();
  block.lcs()->setValues({});
  EXPECT_EQ(onlyText(block), fullText);
}

// ---------------------------------------------------------------------------------------------------- copies

void changeEverything(ztCAD_cmnProperty& block) {
  block.attributes().setName("other");
  block.attributes().setComment("other");
  block.attributes().setInform("other");
  block.showable().setColor({});
  block.showable().setVisible({});
  block.setLcs(std::nullopt);
  block.setReadOk(true);
}

TEST(PropertyBlock, ChangingACopyKeepsTheSource) {
  const ztCAD_cmnProperty source = fullBlock();
  ztCAD_cmnProperty copy = source;
  EXPECT_EQ(onlyText(copy), fullText);
  EXPECT_NE(&copy.attributes(), &source.attributes());
  changeEverything(copy);
  EXPECT_EQ(onlyText(source), fullText);
  EXPECT_FALSE(source.readOk());
}

TEST(PropertyBlock, ChangingAnAssignedBlockKeepsTheSource) {
  const ztCAD_cmnProperty source = fullBlock();
  ztCAD_cmnProperty assigned;
  const ztCAD_gAttr* const itsAttributes = &assigned.attributes();
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_EQ(onlyText(assigned), fullText);
  EXPECT_EQ(&assigned.attributes(), itsAttributes) << "references held by a host must stay valid";
  changeEverything(assigned);
  EXPECT_EQ(onlyText(source), fullText);
}

TEST(PropertyBlock, AssignmentCopiesEmptyPartsToo) {
  ztCAD_cmnProperty assigned = fullBlock();
  assigned = ztCAD_cmnProperty();
  EXPECT_EQ(onlyText(assigned), emptyText);
  EXPECT_FALSE(assigned.hasLCS());
}

TEST(PropertyBlock, AssignmentToItselfChangesNothing) {
  ztCAD_cmnProperty block = fullBlock();
  const ztCAD_cmnProperty& itself = block;
  block = itself;
  EXPECT_EQ(onlyText(block), fullText);
}

TEST(PropertyBlock, CopiesAndAssignmentsKeepTheReadState) {
  const auto source = readFrom<ztCAD_cmnProperty>(R"(<e name="P1"/>)");
  const ztCAD_cmnProperty copy = source;
  ztCAD_cmnProperty assigned;
  assigned = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
  EXPECT_TRUE(assigned.readOk());
  EXPECT_TRUE(assigned.wasRead());
}

TEST(PropertyBlock, AMovedFromBlockStaysUsable) {
  ztCAD_cmnProperty source = fullBlock();
  // a host may use a moved-from block: its attributes are never null
  const ztCAD_cmnProperty taken = std::move(source);  // NOLINT(performance-move-const-arg)
  EXPECT_EQ(onlyText(taken), fullText);
  source.attributes().setName("again");  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(source.attributes().name().toStdString(), "again");
}

}  // namespace
