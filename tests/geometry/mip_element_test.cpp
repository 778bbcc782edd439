#include "geometry/mip_element.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "node_text.h"

namespace {

static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindElementMIP>, ztCAD_ElementMIP>);
static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindTmplElementMIP>, ztCAD_TmplElementMIP>);
static_assert(std::is_abstract_v<ztCAD_commonElementMIP>, "what is common is no element of its own");
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_INameLCS_Selector*>);
static_assert(!std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_ISerialize*>,
              "the one kind of element that has a text and is no ztCAD_ISerialize");

using Reals = std::vector<double>;

const Reals oneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
const char* const fullXml =
    R"(<elementMIP LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="RGB, 1, 2, 3" comment="c" inform="i" method="MIP" name="M1" visible="true"/>)";
const char* const fullText =
    "method==MIP prop=attr=(name=M1, comment=c, inform=i) ,color=RGB, 1, 2, 3visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10";

ztCAD_ElementMIP fullElement() {
  ztCAD_ElementMIP made("M1", ztCAD_MIP(oneToTen));
  made.property().attributes().setComment("c");
  made.property().attributes().setInform("i");
  made.property().showable().setColor({1, 2, 3});
  made.property().showable().setVisible(ztCAD_Visible(true));
  made.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  return made;
}

// ---------------------------------------------------------------------------------------------- construction

TEST(MassInertiaElement, HasItsMethodAndNoRecordAtFirst) {
  const ztCAD_ElementMIP made;
  EXPECT_EQ(made.method().method().toStdString(), "MIP");
  EXPECT_FALSE(made.hasMIP());
  EXPECT_FALSE(made.record().has_value());
  EXPECT_EQ(made.name().toStdString(), "");
  EXPECT_FALSE(made.readOk());
  EXPECT_FALSE(made.wasRead());
  EXPECT_EQ(ztCAD_TmplElementMIP().method().method().toStdString(), "MIP");
}

TEST(MassInertiaElement, TakesNameAndRecordOfItsConstructor) {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(3);
  record.setSecondInteger(4);
  const ztCAD_ElementMIP made("M1", record);
  EXPECT_EQ(made.name().toStdString(), "M1");
  EXPECT_EQ(made.method().method().toStdString(), "MIP");
  EXPECT_TRUE(made.hasMIP());
  ASSERT_TRUE(made.record().has_value());
  EXPECT_EQ(made.record()->values(), oneToTen);
  EXPECT_EQ(made.record()->firstInteger(), 3) << "both integers are copied with the record";
  EXPECT_EQ(made.record()->secondInteger(), 4);
  EXPECT_FALSE(made.wasRead());
}

TEST(MassInertiaElement, TakesItsNameFromNarrowText) {
  EXPECT_EQ(ztCAD_ElementMIP("Точка", ztCAD_MIP(oneToTen)).name().toStdString(), "Точка");
  EXPECT_EQ(ztCAD_ElementMIP("\xD2\xEE\xF7\xEA\xE0", ztCAD_MIP(oneToTen)).name().toStdString(), "Точка");
  EXPECT_EQ(ztCAD_TmplElementMIP("", ztCAD_MIP(oneToTen)).name().toStdString(), "");
}

TEST(MassInertiaElement, TellsItsElementAndItsWordForCoordinateSystems) {
  EXPECT_EQ(ztCAD_ElementMIP().elementName().toStdString(), "elementMIP");
  EXPECT_EQ(ztCAD_ElementMIP().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplElementMIP().elementName().toStdString(), "templateElementMIP");
  EXPECT_EQ(ztCAD_TmplElementMIP().lcsWord().toStdString(), "MCS");
}

const ztCAD_MIP incompleteRecords[] = {ztCAD_MIP(), ztCAD_MIP(Reals()), ztCAD_MIP(Reals{1}),
                                       ztCAD_MIP(Reals(9, 1.0))};

TEST(MassInertiaElement, RecordOfFewerThanTenValuesIsRefused) {
  for (const ztCAD_MIP& record : incompleteRecords) {
    const ztCAD_ElementMIP made("M1", record);
    EXPECT_FALSE(made.hasMIP()) << record.values().size();
    EXPECT_FALSE(made.record().has_value());
    EXPECT_EQ(made.name().toStdString(), "M1");
  }
}

TEST(MassInertiaElement, KeepsItsRecordWhenAnIncompleteOneIsSet) {
  for (const ztCAD_MIP& record : incompleteRecords) {
    ztCAD_ElementMIP made = fullElement();
    const std::string before = written(made);
    made.setRecord(record);
    EXPECT_TRUE(made.hasMIP()) << record.values().size();
    EXPECT_EQ(written(made), before);
  }
}

TEST(MassInertiaElement, RecordCanBeReplacedAndTakenAway) {
  ztCAD_ElementMIP made = fullElement();
  made.setRecord(ztCAD_MIP(Reals(10, 5.0)));
  EXPECT_EQ(made.record()->values(), Reals(10, 5.0));
  made.setRecord(std::nullopt);
  EXPECT_FALSE(made.hasMIP());
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(MassInertiaElement, TextNamesMethodPropertiesAndRecord) { EXPECT_EQ(onlyText(fullElement()), fullText); }

TEST(MassInertiaElement, TextWithoutARecordEndsWithTheProperties) {
  EXPECT_EQ(onlyText(ztCAD_ElementMIP()), "method==MIP prop=attr=(name=, comment=, inform=) ,color=visible=");
}

// --------------------------------------------------------------------------------------------------- writing

// An element without a record does not appear in the file, whatever else it has: any other element of the format is
// written even when it is empty.
TEST(MassInertiaElement, WithoutARecordIsLeftOut) {
  ztCAD_ElementMIP made = fullElement();
  made.setRecord(std::nullopt);
  ztCAD_TmplElementMIP tmpl;
  tmpl.setName("T1");
  ParsedXml xml(R"(<GMD a="1"><header/></GMD>)");
  made.writeXml(xml.root, xml.document);
  tmpl.writeXml(xml.root, xml.document);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(), R"(<GMD a="1"><header/></GMD>)");
}

TEST(MassInertiaElement, WritesOneElementWithoutChildren) {
  EXPECT_EQ(written(fullElement()), fullXml);
  EXPECT_EQ(
      written(ztCAD_TmplElementMIP("T1", ztCAD_MIP(oneToTen))),
      R"(<templateElementMIP MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="" comment="" inform="" method="MIP" name="T1"/>)");
}

TEST(MassInertiaElement, IsAppendedBehindWhatTheParentHas) {
  ParsedXml xml("<GMD><header/></GMD>");
  ztCAD_ElementMIP("A", ztCAD_MIP(oneToTen)).writeXml(xml.root, xml.document);
  ztCAD_ElementMIP("B", ztCAD_MIP(oneToTen)).writeXml(xml.root, xml.document);
  const QDomElement first = xml.root.firstChildElement("elementMIP");
  EXPECT_EQ(first.attribute("name").toStdString(), "A");
  EXPECT_EQ(first.nextSiblingElement().attribute("name").toStdString(), "B");
  EXPECT_EQ(xml.root.firstChildElement().tagName().toStdString(), "header");
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* attributes;
  bool ok;
  bool hasRecord;
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

const ReadRow readRows[] = {
    {"Nothing", "", false, false},
    {"Record", R"(name="M" method="MIP" MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10")", true, true},
    {"CompactRecord", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", true, true},
    {"NoRecord", R"(name="M" method="MIP")", false, false},
    {"EmptyRecord", R"(name="M" method="MIP" MIP="")", false, false},
    {"NineNumbers", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9")", false, false},
    {"ElevenNumbers", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10,11")", false, false},
    {"WordInRecord", R"(name="M" method="MIP" MIP="MIP,1,2,x,4,5,6,7,8,9,10")", false, false},
    {"OtherWordBeforeRecord", R"(name="M" method="MIP" MIP="CS,1,2,3,4,5,6,7,8,9,10")", false, false},
    {"NoMethod", R"(name="M" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"EmptyMethod", R"(name="M" method="" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"OtherMethod", R"(name="M" method="sphere" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"MethodInOtherCase", R"(name="M" method="mip" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"BlankBehindMethod", R"(name="M" method="MIP " MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"NoName", R"(method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"EmptyName", R"(name="" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", true, true},
    {"CyrillicName", R"(name="Масса" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", true, true},
    {"WrongColor", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10" color="red")", false, true},
    {"WrongLcs", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10" LCS="CS")", true, true},
};

std::string elementXml(const ReadRow& row) { return std::string("<elementMIP ") + row.attributes + "/>"; }

class MassInertiaElementReading : public testing::TestWithParam<ReadRow> {};

// A good record is taken over even where the method or the property block is wrong and the read fails.
TEST_P(MassInertiaElementReading, NeedsMethodRecordAndPropertyBlock) {
  ztCAD_ElementMIP made;
  EXPECT_EQ(read(made, elementXml(GetParam())), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_TRUE(made.wasRead());
  EXPECT_EQ(made.hasMIP(), GetParam().hasRecord);
  EXPECT_EQ(made.record().value_or(ztCAD_MIP()).values(), GetParam().hasRecord ? oneToTen : Reals());
}

TEST_P(MassInertiaElementReading, IsTheSameForATemplate) {
  ztCAD_TmplElementMIP made;
  EXPECT_EQ(read(made, elementXml(GetParam())), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_EQ(made.hasMIP(), GetParam().hasRecord);
}

TEST_P(MassInertiaElementReading, KeepsTheEarlierRecordWhereThereIsNoOther) {
  ztCAD_ElementMIP made("M0", ztCAD_MIP(Reals(10, 9.0)));
  EXPECT_EQ(read(made, elementXml(GetParam())), GetParam().ok) << "the earlier record does not help the read";
  ASSERT_TRUE(made.hasMIP());
  EXPECT_EQ(made.record()->values(), GetParam().hasRecord ? oneToTen : Reals(10, 9.0));
}

TEST_P(MassInertiaElementReading, DecidesTheOwnCheck) {
  ztCAD_ElementMIP made("M0", ztCAD_MIP(oneToTen));
  read(made, elementXml(GetParam()));
  EXPECT_EQ(made.passesCheck(), GetParam().ok) << "although it has a record in any case";
}

TEST_P(MassInertiaElementReading, IsDoneByTheCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_ElementMIP made;
    const ParsedXml xml(elementXml(GetParam()));
    EXPECT_EQ(made.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(made.hasMIP(), GetParam().hasRecord);
    EXPECT_FALSE(faultAfterReading(made, elementXml(GetParam()), !fault));
  }
}

INSTANTIATE_TEST_SUITE_P(MassInertiaElement, MassInertiaElementReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(MassInertiaElement, ReadsWhatItWrites) {
  EXPECT_EQ(roundTrip<ztCAD_ElementMIP>(fullXml), fullXml);
  const std::string tmpl =
      R"(<templateElementMIP MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="" comment="" inform="" method="MIP" name="Ш"/>)";
  EXPECT_EQ(roundTrip<ztCAD_TmplElementMIP>(tmpl), tmpl);
}

TEST(MassInertiaElement, OnlySixDigitsTravel) {
  const ztCAD_ElementMIP made("M1", ztCAD_MIP({0.3333333, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(written(made)).record()->values()[0], 0.333333);
}

// The file does not hold them, and a record that was read starts anew.
TEST(MassInertiaElement, IntegersOfTheRecordAreThoseOfANewOneAfterReading) {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(3);
  record.setSecondInteger(4);
  ztCAD_ElementMIP made("M1", record);
  EXPECT_TRUE(read(made, fullXml));
  EXPECT_EQ(made.record()->firstInteger(), 0);
  EXPECT_EQ(made.record()->secondInteger(), 1);
  made.setRecord(record);
  EXPECT_FALSE(read(made, R"(<elementMIP name="M1" method="MIP"/>)"));
  EXPECT_EQ(made.record()->firstInteger(), 3) << "kept with the earlier record";
}

TEST(MassInertiaElement, TakesTheMethodThatItReads) {
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(R"(<e name="M" method="сфера"/>)").method().method().toStdString(),
            "сфера");
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(R"(<e name="M"/>)").method().method().toStdString(), "MIP");
}

// ------------------------------------------------------------------------------------------ own check, copies

TEST(MassInertiaElement, OwnCheckOfOneThatWasNeverReadAsksForARecord) {
  EXPECT_FALSE(ztCAD_ElementMIP().passesCheck());
  EXPECT_FALSE(ztCAD_TmplElementMIP().passesCheck());
  EXPECT_FALSE(ztCAD_ElementMIP("M1", ztCAD_MIP(Reals(9, 1.0))).passesCheck());
  EXPECT_TRUE(fullElement().passesCheck());
  EXPECT_TRUE(ztCAD_TmplElementMIP("T1", ztCAD_MIP(oneToTen)).passesCheck());
}

TEST(MassInertiaElement, ChangingACopyLeavesTheSource) {
  const ztCAD_ElementMIP source = fullElement();
  ztCAD_ElementMIP copy = source;
  ztCAD_ElementMIP assigned;
  assigned = source;
  EXPECT_EQ(written(copy), fullXml);
  EXPECT_EQ(written(assigned), fullXml);
  for (ztCAD_ElementMIP* other : {&copy, &assigned}) {
    other->setName("other");
    other->method().setMethod("other");
    other->property().attributes().setComment("other");
    other->setRecord(std::nullopt);
    other->setReadOk(true);
  }
  EXPECT_EQ(written(source), fullXml);
  EXPECT_FALSE(source.wasRead());
}

TEST(MassInertiaElement, CopiesTakeTheState) {
  const auto source = readFrom<ztCAD_ElementMIP>(fullXml);
  const ztCAD_ElementMIP copy = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

}  // namespace
