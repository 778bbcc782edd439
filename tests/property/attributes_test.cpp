#include "property/attributes.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <type_traits>

#include "node_text.h"
#include "xml/dom_backend.h"

namespace {

// Attributes are read and written by the object that holds them, so they must not convert to a node.
static_assert(std::is_convertible_v<ztCAD_gAttr*, ztCAD_ISerialize*>);
static_assert(!std::is_convertible_v<ztCAD_gAttr*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_gAttr*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_gAttr*, ztCAD_StateCorrect*>);

ztCAD_gAttr attributes(const std::string& name, const std::string& comment, const std::string& inform) {
  ztCAD_gAttr attr;
  attr.setName(fromUtf8(name));
  attr.setComment(fromUtf8(comment));
  attr.setInform(fromUtf8(inform));
  return attr;
}

bool passesCheck(const std::string& xml) {
  ztCAD_gAttr checked = attributes("kept", "kept", "kept");
  bool fault = true;
  const bool passed = checked.readAndCheck(ztcad::DomView(ParsedXml(xml).root), fault);
  EXPECT_FALSE(fault);
  EXPECT_EQ(text(checked, false), "(name=kept, comment=kept, inform=kept)") << "a check must not read";
  EXPECT_FALSE(checked.wasRead());
  return passed;
}

TEST(Attributes, AreEmptyAndOkByDefault) {
  const ztCAD_gAttr attr;
  EXPECT_EQ(onlyText(attr), "(name=, comment=, inform=)");
  EXPECT_TRUE(attr.readOk());
  EXPECT_FALSE(attr.wasRead());
}

TEST(Attributes, AnEmptyNamePassesTheCheck) {
  EXPECT_TRUE(passesCheck(R"(<e name=""/>)"));
  ztCAD_gAttr attr;
  EXPECT_TRUE(read(attr, R"(<e name=""/>)"));
  EXPECT_TRUE(attr.readOk());
}

TEST(Attributes, TheCheckRequiresOnlyAName) {
  EXPECT_TRUE(passesCheck(R"(<e name="P1"/>)"));
  EXPECT_FALSE(passesCheck("<e/>"));
  EXPECT_FALSE(passesCheck(R"(<e comment="c" inform="i"/>)"));
  EXPECT_FALSE(passesCheck(R"(<e Name="P1"/>)"));
  EXPECT_FALSE(passesCheck(R"(<e><e name="P1"/></e>)"));
}

struct RoundTripRow {
  const char* title;
  const char* xml;
  const char* written;
};
std::ostream& operator<<(std::ostream& out, const RoundTripRow& row) { return out << row.title; }

const RoundTripRow roundTripRows[] = {
    {"Empty", R"(<e name="" comment="" inform=""/>)", R"(<e comment="" inform="" name=""/>)"},
    {"OneOfEach", R"(<e name="P1" comment="c" inform="i"/>)", R"(<e comment="c" inform="i" name="P1"/>)"},
    {"OtherOrder", R"(<e inform="i" comment="c" name="P1"/>)", R"(<e comment="c" inform="i" name="P1"/>)"},
    {"NoComment", R"(<e name="P1" inform="i"/>)", R"(<e comment="" inform="i" name="P1"/>)"},
    {"NoInform", R"(<e name="P1" comment="c"/>)", R"(<e comment="c" inform="" name="P1"/>)"},
    {"NoName", R"(<e comment="c" inform="i"/>)", R"(<e comment="c" inform="i" name=""/>)"},
    {"Nothing", "<e/>", R"(<e comment="" inform="" name=""/>)"},
    {"OtherAttributes", R"(<e name="P1" color="RGB,1,2,3" Comment="C" foo="1"/>)",
     R"(<e comment="" inform="" name="P1"/>)"},
    {"Whitespace", R"(<e name=" P 1 " comment="  "/>)", R"(<e comment="  " inform="" name=" P 1 "/>)"},
    {"Cyrillic", R"(<e name="Точка" comment="Ось Ё" inform="№ 1"/>)",
     R"(<e comment="Ось Ё" inform="№ 1" name="Точка"/>)"},
    {"Quotes", R"(<e name='"A"' comment="it's" inform="&lt;&amp;&gt;"/>)",
     R"(<e comment="it's" inform="&lt;&amp;&gt;" name="&quot;A&quot;"/>)"},
    {"Placeholders", R"(<e name="%1" comment="%2 %L1" inform="%%"/>)",
     R"(<e comment="%2 %L1" inform="%%" name="%1"/>)"},
    {"Emoji", R"(<e name="🙂" comment="a🙂b" inform="𝄞"/>)",
     R"(<e comment="a🙂b" inform="𝄞" name="🙂"/>)"},
};

class AttributesRoundTrip : public testing::TestWithParam<RoundTripRow> {};

TEST_P(AttributesRoundTrip, WritesAllThreeAttributesAlways) {
  EXPECT_EQ(roundTrip<ztCAD_gAttr>(GetParam().xml), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(Attributes, AttributesRoundTrip, testing::ValuesIn(roundTripRows),
                         [](const auto& row) { return row.param.title; });

TEST(Attributes, AMissingCommentIsReadAsEmptyAndWritten) {
  ztCAD_gAttr attr = attributes("", "earlier", "earlier");
  EXPECT_TRUE(read(attr, R"(<e name="P1"/>)"));
  EXPECT_EQ(text(attr, false), "(name=P1, comment=, inform=)");
  EXPECT_EQ(written(attr), R"(<e comment="" inform="" name="P1"/>)");
}

TEST(Attributes, AMissingNameFailsTheReadButTheOthersAreRead) {
  ztCAD_gAttr attr = attributes("earlier", "earlier", "earlier");
  EXPECT_FALSE(read(attr, R"(<e comment="c" inform="i"/>)"));
  EXPECT_FALSE(attr.readOk());
  EXPECT_TRUE(attr.wasRead());
  EXPECT_EQ(text(attr, false), "(name=, comment=c, inform=i)");
}

TEST(Attributes, TheStateReflectsTheLastRead) {
  ztCAD_gAttr attr;
  EXPECT_FALSE(read(attr, "<e/>"));
  EXPECT_TRUE(read(attr, R"(<e name="P1"/>)"));
  EXPECT_TRUE(attr.readOk());
}

TEST(Attributes, EveryReadClearsTheFault) {
  for (const char* xml : {R"(<e name="P1"/>)", "<e/>"}) {
    for (const bool before : {false, true}) {
      ztCAD_gAttr attr;
      EXPECT_FALSE(faultAfterReading(attr, xml, before)) << xml;
    }
  }
}

TEST(Attributes, TextContainsAllThreeAttributes) {
  EXPECT_EQ(onlyText(attributes("P1", "", "")), "(name=P1, comment=, inform=)");
  EXPECT_EQ(onlyText(attributes("P1", "a comment", "info")), "(name=P1, comment=a comment, inform=info)");
}

TEST(Attributes, TextKeepsPlaceholdersAndNonAsciiLetters) {
  EXPECT_EQ(onlyText(attributes("%1", "%2", "%3")), "(name=%1, comment=%2, inform=%3)");
  EXPECT_EQ(onlyText(attributes("Точка", "\"🙂\"", "<&>")),
            "(name=Точка, comment=\"🙂\", inform=<&>)");
}

TEST(Attributes, WritingKeepsOtherAttributesOfTheElement) {
  ParsedXml xml(R"(<e other="1" name="old"/>)");
  attributes("P1", "c", "i").writeXml(xml.root, xml.document);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(), R"(<e comment="c" inform="i" name="P1" other="1"/>)");
}

TEST(Attributes, ReadsAndWritesThroughViewAndSink) {
  ParsedXml from(R"(<e name="P1" comment="c"/>)");
  ParsedXml to("<e/>");
  ztCAD_gAttr copied;
  bool fault = true;
  EXPECT_TRUE(copied.read(ztcad::DomView(from.root), fault));
  EXPECT_FALSE(fault);
  ztcad::DomSink sink(to.root, to.document);
  copied.write(sink);
  EXPECT_EQ(node_text::textOf(to.root).toStdString(), R"(<e comment="c" inform="" name="P1"/>)");
}

TEST(Attributes, ChangingACopyKeepsTheSource) {
  const ztCAD_gAttr source = attributes("P1", "c", "i");
  ztCAD_gAttr copy = source;
  EXPECT_EQ(text(copy, false), "(name=P1, comment=c, inform=i)");
  copy.setName("P2");
  copy.setComment("other");
  copy.setInform("other");
  EXPECT_EQ(text(source, false), "(name=P1, comment=c, inform=i)");
}

TEST(Attributes, CopiesKeepTheReadState) {
  const auto failed = readFrom<ztCAD_gAttr>("<e/>");
  const ztCAD_gAttr copy = failed;
  EXPECT_FALSE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

TEST(Attributes, AssignmentToItselfChangesNothing) {
  ztCAD_gAttr attr = attributes("P1", "c", "i");
  const ztCAD_gAttr& itself = attr;
  attr = itself;
  EXPECT_EQ(text(attr, false), "(name=P1, comment=c, inform=i)");
}

}  // namespace
