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
static_assert(std::is_abstract_v<ztCAD_commonElementMIP>, "the common base cannot be instantiated");
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_INameLCS_Selector*>);
static_assert(!std::is_convertible_v<ztCAD_ElementMIP*, ztCAD_ISerialize*>,
              "the only kind of element that has a text but is not a ztCAD_ISerialize");

using Reals = std::vector<double>;

const Reals oneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
const char* const fullXml =
    R"(<elementMIP LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="RGB, 1, 2, 3" comment="c" inform="i" method="MIP" name="M1" visible="true"/>)";
const char* const fullText =
    "method==MIP prop=attr=(name=M1, comment=c, inform=i) ,color=RGB, 1, 2, 3visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10";

ztCAD_ElementMIP fullElement() {
  ztCAD_ElementMIP element("M1", ztCAD_MIP(oneToTen));
  element.property().attributes().setComment("c");
  element.property().attributes().setInform("i");
  element.property().showable().setColor({1, 2, 3});
  element.property().showable().setVisible(ztCAD_Visible(true));
  element.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  return element;
}

// ---------------------------------------------------------------------------------------------- construction

TEST(MassInertiaElement, HasItsMethodAndNoRecordByDefault) {
  const ztCAD_ElementMIP element;
  EXPECT_EQ(element.method().method().toStdString(), "MIP");
  EXPECT_FALSE(element.hasMIP());
  EXPECT_FALSE(element.record().has_value());
  EXPECT_EQ(element.name().toStdString(), "");
  EXPECT_FALSE(element.readOk());
  EXPECT_FALSE(element.wasRead());
  EXPECT_EQ(ztCAD_TmplElementMIP().method().method().toStdString(), "MIP");
}

TEST(MassInertiaElement, HasTheNameAndRecordPassedToItsConstructor) {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(3);
  record.setSecondInteger(4);
  const ztCAD_ElementMIP element("M1", record);
  EXPECT_EQ(element.name().toStdString(), "M1");
  EXPECT_EQ(element.method().method().toStdString(), "MIP");
  EXPECT_TRUE(element.hasMIP());
  ASSERT_TRUE(element.record().has_value());
  EXPECT_EQ(element.record()->values(), oneToTen);
  EXPECT_EQ(element.record()->firstInteger(), 3) << "the integers are copied with the record";
  EXPECT_EQ(element.record()->secondInteger(), 4);
  EXPECT_FALSE(element.wasRead());
}

TEST(MassInertiaElement, AcceptsItsNameAsNarrowText) {
  EXPECT_EQ(ztCAD_ElementMIP("Точка", ztCAD_MIP(oneToTen)).name().toStdString(), "Точка");
  EXPECT_EQ(ztCAD_ElementMIP("\xD2\xEE\xF7\xEA\xE0", ztCAD_MIP(oneToTen)).name().toStdString(), "Точка");
  EXPECT_EQ(ztCAD_TmplElementMIP("", ztCAD_MIP(oneToTen)).name().toStdString(), "");
}

TEST(MassInertiaElement, ReturnsItsElementNameAndCoordinateSystemAttribute) {
  EXPECT_EQ(ztCAD_ElementMIP().elementName().toStdString(), "elementMIP");
  EXPECT_EQ(ztCAD_ElementMIP().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplElementMIP().elementName().toStdString(), "templateElementMIP");
  EXPECT_EQ(ztCAD_TmplElementMIP().lcsWord().toStdString(), "MCS");
}

const ztCAD_MIP incompleteRecords[] = {ztCAD_MIP(), ztCAD_MIP(Reals()), ztCAD_MIP(Reals{1}),
                                       ztCAD_MIP(Reals(9, 1.0))};

TEST(MassInertiaElement, ARecordOfFewerThanTenValuesIsRefused) {
  for (const ztCAD_MIP& record : incompleteRecords) {
    const ztCAD_ElementMIP element("M1", record);
    EXPECT_FALSE(element.hasMIP()) << record.values().size();
    EXPECT_FALSE(element.record().has_value());
    EXPECT_EQ(element.name().toStdString(), "M1");
  }
}

TEST(MassInertiaElement, SettingAnIncompleteRecordKeepsThePreviousOne) {
  for (const ztCAD_MIP& record : incompleteRecords) {
    ztCAD_ElementMIP element = fullElement();
    const std::string before = written(element);
    element.setRecord(record);
    EXPECT_TRUE(element.hasMIP()) << record.values().size();
    EXPECT_EQ(written(element), before);
  }
}

TEST(MassInertiaElement, TheRecordCanBeReplacedAndCleared) {
  ztCAD_ElementMIP element = fullElement();
  element.setRecord(ztCAD_MIP(Reals(10, 5.0)));
  EXPECT_EQ(element.record()->values(), Reals(10, 5.0));
  element.setRecord(std::nullopt);
  EXPECT_FALSE(element.hasMIP());
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(MassInertiaElement, TextContainsMethodPropertiesAndRecord) {
  EXPECT_EQ(onlyText(fullElement()), fullText);
}

TEST(MassInertiaElement, TextWithoutARecordEndsWithTheProperties) {
  EXPECT_EQ(onlyText(ztCAD_ElementMIP()), "method==MIP prop=attr=(name=, comment=, inform=) ,color=visible=");
}

// --------------------------------------------------------------------------------------------------- writing

// An element without a record is not written at all, whatever its other properties. Every other kind of
// element is written even if it is empty.
TEST(MassInertiaElement, IsNotWrittenWithoutARecord) {
  ztCAD_ElementMIP element = fullElement();
  element.setRecord(std::nullopt);
  ztCAD_TmplElementMIP tmpl;
  tmpl.setName("T1");
  ParsedXml xml(R"(<GMD a="1"><header/></GMD>)");
  element.writeXml(xml.root, xml.document);
  tmpl.writeXml(xml.root, xml.document);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(), R"(<GMD a="1"><header/></GMD>)");
}

TEST(MassInertiaElement, WritesOneElementWithoutChildren) {
  EXPECT_EQ(written(fullElement()), fullXml);
  EXPECT_EQ(
      written(ztCAD_TmplElementMIP("T1", ztCAD_MIP(oneToTen))),
      R"(<templateElementMIP MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="" comment="" inform="" method="MIP" name="T1"/>)");
}

TEST(MassInertiaElement, IsAppendedAfterTheChildrenOfItsParent) {
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
    {"SpaceAfterMethod", R"(name="M" method="MIP " MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"NoName", R"(method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", false, true},
    {"EmptyName", R"(name="" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", true, true},
    {"CyrillicName", R"(name="Масса" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10")", true, true},
    {"InvalidColor", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10" color="red")", false, true},
    {"InvalidLcs", R"(name="M" method="MIP" MIP="MIP,1,2,3,4,5,6,7,8,9,10" LCS="CS")", true, true},
};

std::string elementXml(const ReadRow& row) { return std::string("<elementMIP ") + row.attributes + "/>"; }

class MassInertiaElementReading : public testing::TestWithParam<ReadRow> {};

// A valid record is read even if the method or the property block makes the read fail.
TEST_P(MassInertiaElementReading, RequiresMethodRecordAndPropertyBlock) {
  ztCAD_ElementMIP element;
  EXPECT_EQ(read(element, elementXml(GetParam())), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_TRUE(element.wasRead());
  EXPECT_EQ(element.hasMIP(), GetParam().hasRecord);
  EXPECT_EQ(element.record().value_or(ztCAD_MIP()).values(), GetParam().hasRecord ? oneToTen : Reals());
}

TEST_P(MassInertiaElementReading, ReadsATemplateTheSameWay) {
  ztCAD_TmplElementMIP element;
  EXPECT_EQ(read(element, elementXml(GetParam())), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_EQ(element.hasMIP(), GetParam().hasRecord);
}

TEST_P(MassInertiaElementReading, KeepsThePreviousRecordWithoutAValidNewOne) {
  ztCAD_ElementMIP element("M0", ztCAD_MIP(Reals(10, 9.0)));
  EXPECT_EQ(read(element, elementXml(GetParam())), GetParam().ok)
      << "the previous record must not make the read succeed";
  ASSERT_TRUE(element.hasMIP());
  EXPECT_EQ(element.record()->values(), GetParam().hasRecord ? oneToTen : Reals(10, 9.0));
}

TEST_P(MassInertiaElementReading, DeterminesTheSelfCheck) {
  ztCAD_ElementMIP element("M0", ztCAD_MIP(oneToTen));
  read(element, elementXml(GetParam()));
  EXPECT_EQ(element.passesCheck(), GetParam().ok) << "regardless of its record, which is set";
}

TEST_P(MassInertiaElementReading, IsPerformedByReadAndCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_ElementMIP element;
    const ParsedXml xml(elementXml(GetParam()));
    EXPECT_EQ(element.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(element.hasMIP(), GetParam().hasRecord);
    EXPECT_FALSE(faultAfterReading(element, elementXml(GetParam()), !fault));
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

TEST(MassInertiaElement, SixDigitsSurviveARoundTrip) {
  const ztCAD_ElementMIP element("M1", ztCAD_MIP({0.3333333, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(written(element)).record()->values()[0], 0.333333);
}

// A file does not store the integers, and a read creates a new record.
TEST(MassInertiaElement, ReadingResetsTheIntegersOfTheRecord) {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(3);
  record.setSecondInteger(4);
  ztCAD_ElementMIP element("M1", record);
  EXPECT_TRUE(read(element, fullXml));
  EXPECT_EQ(element.record()->firstInteger(), 0);
  EXPECT_EQ(element.record()->secondInteger(), 1);
  element.setRecord(record);
  EXPECT_FALSE(read(element, R"(<elementMIP name="M1" method="MIP"/>)"));
  EXPECT_EQ(element.record()->firstInteger(), 3) << "kept with the previous record";
}

TEST(MassInertiaElement, HasTheMethodThatItReads) {
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(R"(<e name="M" method="сфера"/>)").method().method().toStdString(),
            "сфера");
  EXPECT_EQ(readFrom<ztCAD_ElementMIP>(R"(<e name="M"/>)").method().method().toStdString(), "MIP");
}

// ---------------------------------------------------------------------------------------- self-check, copies

TEST(MassInertiaElement, SelfCheckOfAnElementThatWasNotReadRequiresARecord) {
  EXPECT_FALSE(ztCAD_ElementMIP().passesCheck());
  EXPECT_FALSE(ztCAD_TmplElementMIP().passesCheck());
  EXPECT_FALSE(ztCAD_ElementMIP("M1", ztCAD_MIP(Reals(9, 1.0))).passesCheck());
  EXPECT_TRUE(fullElement().passesCheck());
  EXPECT_TRUE(ztCAD_TmplElementMIP("T1", ztCAD_MIP(oneToTen)).passesCheck());
}

TEST(MassInertiaElement, ChangingACopyKeepsTheSource) {
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

TEST(MassInertiaElement, CopiesKeepTheReadState) {
  const auto source = readFrom<ztCAD_ElementMIP>(fullXml);
  const ztCAD_ElementMIP copy = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

}  // namespace
