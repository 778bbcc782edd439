#include "geometry/mip.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/default_locale.h"
#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_MIP*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_MIP*, ztCAD_INode*>);

using Reals = std::vector<double>;

const Reals oneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
const char* const oneToTenText = "MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10";
const char* const oneToTenXml = R"(<e MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10"/>)";

ztCAD_MIP recordWithIntegers() {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(-7);
  record.setSecondInteger(2147483647);
  return record;
}

// ---------------------------------------------------------------------------------------------- construction

TEST(MassInertiaRecord, IsEmptyByDefault) {
  const ztCAD_MIP record;
  EXPECT_FALSE(record.isValid());
  EXPECT_TRUE(record.values().empty());
  EXPECT_FALSE(record.isComplete());
  EXPECT_EQ(record.firstInteger(), 0);
  EXPECT_EQ(record.secondInteger(), 1) << "unlike the first integer, which starts as 0";
}

TEST(MassInertiaRecord, HasTheValuesPassedToItsConstructor) {
  const ztCAD_MIP record(oneToTen);
  EXPECT_TRUE(record.isValid());
  EXPECT_EQ(record.values(), oneToTen);
  EXPECT_EQ(record.firstInteger(), 0);
  EXPECT_EQ(record.secondInteger(), 1);
}

TEST(MassInertiaRecord, SettingValuesMakesItValidAndKeepsItsIntegers) {
  ztCAD_MIP record;
  record.setFirstInteger(5);
  record.setSecondInteger(6);
  record.setValues(oneToTen);
  EXPECT_TRUE(record.isValid());
  EXPECT_EQ(record.values(), oneToTen);
  EXPECT_EQ(record.firstInteger(), 5);
  EXPECT_EQ(record.secondInteger(), 6);
}

TEST(MassInertiaRecord, ChangingACopyKeepsTheSource) {
  const ztCAD_MIP source = recordWithIntegers();
  ztCAD_MIP copy = source;
  EXPECT_EQ(copy.firstInteger(), -7) << "copies keep the integers";
  EXPECT_EQ(copy.secondInteger(), 2147483647);
  EXPECT_TRUE(copy.isValid());
  copy.setValues({});
  copy.setFirstInteger(1);
  ztCAD_MIP assigned;
  assigned = source;
  EXPECT_EQ(assigned.firstInteger(), -7);
  EXPECT_EQ(assigned.secondInteger(), 2147483647);
  assigned.setValues({1});
  EXPECT_EQ(source.values(), oneToTen);
  EXPECT_EQ(source.firstInteger(), -7);
}

// ------------------------------------------------------------------------------------------- text, attribute

struct WriteRow {
  const char* name;
  ztCAD_MIP record;
  const char* text;
};
std::ostream& operator<<(std::ostream& out, const WriteRow& row) { return out << row.name; }

std::vector<WriteRow> writeRows() {
  return {
      {"NotValid", ztCAD_MIP(), ""},
      {"NoValues", ztCAD_MIP(Reals()), ""},
      {"OneValue", ztCAD_MIP(Reals(1, 5.0)), ""},
      {"NineValues", ztCAD_MIP(Reals(9, 5.0)), ""},
      {"TenValues", ztCAD_MIP(oneToTen), oneToTenText},
      {"EqualValues", ztCAD_MIP(Reals(10, 0.5)), "MIP, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5"},
      {"FurtherValuesAreOmitted", ztCAD_MIP({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), oneToTenText},
      {"SixDigits", ztCAD_MIP({0.3333333, 1234567, 1e-7, -0.5, 1e300, 0, -0.0, 0.1, 123456, 999999.5}),
       "MIP, 0.333333, 1.23457e+06, 1e-07, -0.5, 1e+300, 0, 0, 0.1, 123456, 1e+06"},
      {"IntegersAreNotWritten", recordWithIntegers(), oneToTenText},
  };
}

class MassInertiaWriting : public testing::TestWithParam<WriteRow> {};

TEST_P(MassInertiaWriting, BothFormsOfTheTextAreEqual) {
  EXPECT_EQ(onlyText(GetParam().record), GetParam().text);
}

TEST_P(MassInertiaWriting, AnIncompleteRecordWritesNoAttribute) {
  const std::string attribute = GetParam().text;
  EXPECT_EQ(written(GetParam().record), attribute.empty() ? "<e/>" : R"(<e MIP=")" + attribute + R"("/>)");
  EXPECT_EQ(GetParam().record.isComplete(), !attribute.empty());
}

INSTANTIATE_TEST_SUITE_P(MassInertiaRecord, MassInertiaWriting, testing::ValuesIn(writeRows()),
                         [](const auto& row) { return row.param.name; });

TEST(MassInertiaRecord, TextDoesNotDependOnTheDefaultLocale) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(onlyText(ztCAD_MIP({0.5, 123456, 3, 4, 5, 6, 7, 8, 9, 10})),
              "MIP, 0.5, 123456, 3, 4, 5, 6, 7, 8, 9, 10");
  }
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* text;
  bool ok;
  Reals values;  // of a record that had none
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

std::vector<ReadRow> readRows() {
  return {
      {"Empty", "", false, {}},
      {"OnlyWord", "MIP", false, {}},
      {"OneNumber", "MIP, 1", false, {}},
      {"NoSpaces", "MIP,1,2,3,4,5,6,7,8,9,10", true, oneToTen},
      {"AsWritten", oneToTenText, true, oneToTen},
      {"NineNumbers", "MIP,1,2,3,4,5,6,7,8,9", false, {}},
      {"ElevenNumbers", "MIP,1,2,3,4,5,6,7,8,9,10,11", false, {}},
      {"TenNumbersWithoutTheWord", "1,2,3,4,5,6,7,8,9,10", false, {}},
      {"ElevenNumbersWithoutTheWord", "0,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"WordAtTheEnd", "1,2,3,4,5,6,7,8,9,10,MIP", false, {}},
      {"OtherWord", "CS,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"OtherCase", "mip,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"CyrillicWord", "МИП,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"SpaceBeforeTheWord", " MIP,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"SpaceAfterTheWord", "MIP ,1,2,3,4,5,6,7,8,9,10", false, {}},
      {"WordTwice", "MIP,MIP,2,3,4,5,6,7,8,9,10", false, {0, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"EmptyPartsIgnored", ",MIP,,1,2,3,4,5,6,7,8,9,10,", true, oneToTen},
      {"WhitespacePart", "MIP,1, ,3,4,5,6,7,8,9,10", false, {1, 0, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"WordFirst", "MIP,x,2,3,4,5,6,7,8,9,10", false, {0, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"WordLast", "MIP,1,2,3,4,5,6,7,8,9,x", false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 0}},
      {"SemicolonAtTheEnd", "MIP,1,2,3,4,5,6,7,8,9,10;", false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 0}},
      {"ArabicDigit", "MIP,١,2,3,4,5,6,7,8,9,10", false, {0, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"OnlyWords", "MIP,a,b,c,d,e,f,g,h,i,j", false, Reals(10, 0.0)},
      {"WhitespaceAndLineFeeds", "MIP,\n1 ,\t2\t, 3,4,5,6,7,8,9,  10\r\n", true, oneToTen},
      {"SignsAndExponents",
       "MIP,-0.5,+2,1e3,1E-3,5.,.5,007,8,9,10",
       true,
       {-0.5, 2, 1000, 0.001, 5, 0.5, 7, 8, 9, 10}},
  };
}

std::string mipXml(const ReadRow& row) { return std::string(R"(<e MIP=")") + row.text + R"("/>)"; }

class MassInertiaReading : public testing::TestWithParam<ReadRow> {};

TEST_P(MassInertiaReading, RequiresTheWordAndExactlyTenNumbers) {
  ztCAD_MIP record;
  EXPECT_EQ(record.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(record.values(), GetParam().values);
  EXPECT_EQ(record.isValid(), !GetParam().values.empty());
}

TEST_P(MassInertiaReading, AppendsTheTextToAValidRecord) {
  ztCAD_MIP record(Reals{7});
  EXPECT_EQ(record.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  Reals expected = {7};
  expected.insert(expected.end(), GetParam().values.begin(), GetParam().values.end());
  EXPECT_EQ(record.values(), expected);
  EXPECT_TRUE(record.isValid());
}

TEST_P(MassInertiaReading, AnAttributeReplacesTheValuesOrChangesNothing) {
  const Reals before(10, 9.0);
  ztCAD_MIP record(before);
  record.setFirstInteger(5);
  record.setSecondInteger(6);
  const ReadRow& row = GetParam();
  EXPECT_EQ(read(record, mipXml(row)), row.ok);
  EXPECT_EQ(record.values(), row.ok ? row.values : before);
  EXPECT_TRUE(record.isValid());
  EXPECT_EQ(record.firstInteger(), 5) << "the integers are not stored in a file";
  EXPECT_EQ(record.secondInteger(), 6);
}

TEST_P(MassInertiaReading, AnInvalidAttributeKeepsANewRecordEmpty) {
  ztCAD_MIP record;
  EXPECT_EQ(read(record, mipXml(GetParam())), GetParam().ok);
  EXPECT_EQ(record.isValid(), GetParam().ok);
  EXPECT_EQ(record.values(), GetParam().ok ? GetParam().values : Reals());
}

TEST_P(MassInertiaReading, ClearsTheFault) {
  ztCAD_MIP record;
  EXPECT_FALSE(faultAfterReading(record, mipXml(GetParam()), true));
  EXPECT_FALSE(faultAfterReading(record, mipXml(GetParam()), false));
}

INSTANTIATE_TEST_SUITE_P(MassInertiaRecord, MassInertiaReading, testing::ValuesIn(readRows()),
                         [](const auto& row) { return row.param.name; });

TEST(MassInertiaRecord, AnOverflowIsRefused) {
  ztCAD_MIP record;
  EXPECT_FALSE(read(record, R"(<e MIP="MIP,1e999,2,3,4,5,6,7,8,9,10"/>)"));
  EXPECT_FALSE(record.isValid());
}

TEST(MassInertiaRecord, AnElementWithoutTheAttributeIsRefused) {
  for (const char* xml :
       {"<e/>", R"(<e mip="MIP,1,2,3,4,5,6,7,8,9,10"/>)", R"(<e><f MIP="MIP,1,2,3,4,5,6,7,8,9,10"/></e>)"}) {
    ztCAD_MIP record(Reals(10, 9.0));
    EXPECT_FALSE(read(record, xml));
    EXPECT_EQ(record.values(), Reals(10, 9.0));
    EXPECT_FALSE(faultAfterReading(record, xml, true));
  }
}

TEST(MassInertiaRecord, ReadingTextKeepsTheIntegersOfAnEmptyRecord) {
  ztCAD_MIP record;
  record.setFirstInteger(5);
  record.setSecondInteger(6);
  EXPECT_TRUE(record.fromText(QString(oneToTenText)));
  EXPECT_EQ(record.firstInteger(), 5);
  EXPECT_EQ(record.secondInteger(), 6);
}

TEST(MassInertiaRecord, TextOfARecordFilledTwiceHasTheFirstTenValues) {
  ztCAD_MIP record;
  EXPECT_TRUE(record.fromText(QString(oneToTenText)));
  EXPECT_TRUE(record.fromText(QString("MIP,0,0,0,0,0,0,0,0,0,0")));
  EXPECT_EQ(record.values().size(), 20u);
  EXPECT_EQ(onlyText(record), oneToTenText);
}

TEST(MassInertiaRecord, ReadsWhatItWrites) { EXPECT_EQ(roundTrip<ztCAD_MIP>(oneToTenXml), oneToTenXml); }

// The format has six significant digits everywhere; further digits are lost on the first save.
TEST(MassInertiaRecord, SixDigitsSurviveARoundTrip) {
  const ztCAD_MIP source({0.3333333, 2.0 / 3, 1234567, 4, 5, 6, 7, 8, 9, 10});
  const auto copy = readFrom<ztCAD_MIP>(written(source));
  EXPECT_EQ(copy.values(), (Reals{0.333333, 0.666667, 1.23457e+06, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(written(copy), written(source)) << "a second save must lose nothing more";
}

TEST(MassInertiaRecord, ReadingNeitherUsesNorChangesTheDefaultLocale) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(readFrom<ztCAD_MIP>(R"(<e MIP="MIP,1.5,2,3,4,5,6,7,8,9,10"/>)").values()[0], 1.5);
    EXPECT_FALSE(DefaultLocale::isC());
  }
}

}  // namespace
