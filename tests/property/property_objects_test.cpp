#include <gtest/gtest.h>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "node_text.h"
#include "property/property_block.h"

// The values of a property block before and after its objects are made.

namespace {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) && defined(__linux__) && defined(__x86_64__)
static_assert(sizeof(ztCAD_cmnProperty) <= 56, "documents have millions of property blocks");
#endif

struct Row {
  const char* name;
  std::function<void(ztCAD_cmnProperty&)> set;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row rows[] = {
    {"Nothing", [](ztCAD_cmnProperty&) {}},
    {"ShortName", [](ztCAD_cmnProperty& block) { block.setName(QLatin1String("P1")); }},
    {"LongName", [](ztCAD_cmnProperty& block) { block.setName(QString(100, QLatin1Char('x'))); }},
    {"CyrillicName", [](ztCAD_cmnProperty& block) { block.setName(fromUtf8("Точка")); }},
    {"HeldName", [](ztCAD_cmnProperty& block) { block.setShortName(ztCAD_ShortText(fromUtf8("Ё"))); }},
    {"Comment", [](ztCAD_cmnProperty& block) { block.setComment(QLatin1String("c")); }},
    {"LongComment", [](ztCAD_cmnProperty& block) { block.setComment(QString(100, QLatin1Char('c'))); }},
    {"EmptyComment", [](ztCAD_cmnProperty& block) { block.setComment(QString()); }},
    {"Inform", [](ztCAD_cmnProperty& block) { block.setInform(fromUtf8("№ 1")); }},
    {"CommentAndInform",
     [](ztCAD_cmnProperty& block) {
       block.setComment(QLatin1String("c"));
       block.setInform(QLatin1String("i"));
     }},
    {"Black",
     [](ztCAD_cmnProperty& block) {
       block.setColor({0, 0, 0});
     }},
    {"White",
     [](ztCAD_cmnProperty& block) {
       block.setColor({255, 255, 255});
     }},
    {"ThreeComponents",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1, 2, 3});
     }},
    {"RedAbove255",
     [](ztCAD_cmnProperty& block) {
       block.setColor({256, 2, 3});
     }},
    {"GreenAbove255",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1, 256, 3});
     }},
    {"BlueAbove255",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1, 2, 256});
     }},
    {"GreatestColor",
     [](ztCAD_cmnProperty& block) {
       constexpr auto greatest = std::numeric_limits<std::uint32_t>::max();
       block.setColor({greatest, greatest, greatest});
     }},
    {"SmallColorAfterAGreatOne",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1000, 2000, 3000});
       block.setColor({4, 5, 6});
     }},
    {"NoColorAgain",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1, 2, 3});
       block.setColor({});
     }},
    {"NoColorAfterAGreatOne",
     [](ztCAD_cmnProperty& block) {
       block.setColor({1, 2, 300});
       block.setColor({});
     }},
    {"Shown", [](ztCAD_cmnProperty& block) { block.setVisible(ztCAD_Visible(true)); }},
    {"Hidden", [](ztCAD_cmnProperty& block) { block.setVisible(ztCAD_Visible(false)); }},
    {"VisibilityUnsetAgain",
     [](ztCAD_cmnProperty& block) {
       block.setVisible(ztCAD_Visible(true));
       block.setVisible({});
     }},
    {"ColorAndHidden",
     [](ztCAD_cmnProperty& block) {
       block.setVisible(ztCAD_Visible(true));
       block.setColor({1, 2, 3});
       block.setVisible(ztCAD_Visible(false));
     }},
    {"System",
     [](ztCAD_cmnProperty& block) {
       block.setLcs(ztCAD_LCS(true, {1, 2}));
     }},
    {"EmptySystem", [](ztCAD_cmnProperty& block) { block.setLcs(ztCAD_LCS()); }},
    {"SystemRemoved",
     [](ztCAD_cmnProperty& block) {
       block.setLcs(ztCAD_LCS(true, {1, 2}));
       block.setLcs(std::nullopt);
     }},
    {"SystemAndComment",
     [](ztCAD_cmnProperty& block) {
       block.setLcs(ztCAD_LCS(false, {1, 2}));
       block.setComment(QLatin1String("c"));
     }},
};

/// All that the functions of a block return but those that make the objects.
std::string valuesOf(const ztCAD_cmnProperty& block) {
  const ztCAD_Color color = block.color();
  const ztCAD_Visible visible = block.visible();
  std::string text = block.name().toStdString() + '|' + block.shortName().toString().toStdString() + '|' +
                     block.comment().toStdString() + '|' + block.inform().toStdString() + '|';
  for (const std::uint32_t number : {std::uint32_t{color.isSet()}, color.red(), color.green(), color.blue()})
    text += std::to_string(number) + ' ';
  text += !visible.isSet() ? "unset" : *visible.value() ? "shown" : "hidden";
  text += block.hasLCS() ? onlyText(*block.lcs()) + (block.lcs()->isLocal() ? " local" : " model") : "none";
  return text + '|' + written(block) + '|' + onlyText(block);
}

/// The same from the objects, which are made by that.
std::string valuesOfObjects(const ztCAD_cmnProperty& block) {
  const ztCAD_gAttr& attributes = block.attributes();
  ztCAD_cmnProperty same;
  same.setName(attributes.name());
  same.setComment(attributes.comment());
  same.setInform(attributes.inform());
  same.setColor(block.showable().color());
  same.setVisible(block.showable().visible());
  same.setLcs(block.lcs());
  return valuesOf(same);
}

class PropertyValues : public testing::TestWithParam<Row> {};

TEST_P(PropertyValues, AreTheSameAfterTheObjectsAreMade) {
  ztCAD_cmnProperty block;
  GetParam().set(block);
  const std::string before = valuesOf(block);
  EXPECT_EQ(valuesOfObjects(block), before);
  EXPECT_EQ(valuesOf(block), before);
}

TEST_P(PropertyValues, AreTheSameIfTheObjectsAreMadeFirst) {
  ztCAD_cmnProperty block;
  GetParam().set(block);
  ztCAD_cmnProperty withAttributes;
  withAttributes.attributes();
  GetParam().set(withAttributes);
  EXPECT_EQ(valuesOf(withAttributes), valuesOf(block));
  EXPECT_EQ(valuesOfObjects(withAttributes), valuesOf(block));
  ztCAD_cmnProperty withShowable;
  withShowable.showable();
  GetParam().set(withShowable);
  EXPECT_EQ(valuesOf(withShowable), valuesOf(block));
}

TEST_P(PropertyValues, AreCopiedWithAndWithoutObjects) {
  for (const bool sourceHasObjects : {false, true}) {
    ztCAD_cmnProperty source;
    GetParam().set(source);
    const std::string values = valuesOf(source);
    if (sourceHasObjects) source.attributes();
    const ztCAD_cmnProperty copy = source;
    EXPECT_EQ(valuesOf(copy), values);
    EXPECT_NE(&copy.attributes(), &source.attributes());
    EXPECT_NE(&copy.showable(), &source.showable());
    EXPECT_EQ(valuesOf(copy), values);
  }
}

TEST_P(PropertyValues, ReplaceAllOthersInAnAssignment) {
  for (const Row& former : rows) {
    for (const bool sourceHasObjects : {false, true}) {
      for (const bool targetHasObjects : {false, true}) {
        ztCAD_cmnProperty source;
        GetParam().set(source);
        const std::string values = valuesOf(source);
        if (sourceHasObjects) source.attributes();
        ztCAD_cmnProperty target;
        former.set(target);
        if (targetHasObjects) target.showable();
        target = source;
        EXPECT_EQ(valuesOf(target), values) << former << sourceHasObjects << targetHasObjects;
        target.setName(QLatin1String("other"));
        target.setColor({9, 9, 999});
        target.setComment(QLatin1String("other"));
        target.setLcs(ztCAD_LCS(false, {7}));
        EXPECT_EQ(valuesOf(source), values) << former << sourceHasObjects << targetHasObjects;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(PropertyObjects, PropertyValues, testing::ValuesIn(rows),
                         [](const auto& row) { return row.param.name; });

TEST(PropertyObjects, HoldTheValuesFromThenOn) {
  ztCAD_cmnProperty block;
  block.setName(QLatin1String("before"));
  ztCAD_gAttr& attributes = block.attributes();
  ztCAD_gShowable& showable = block.showable();
  attributes.setName(QLatin1String("P1"));
  attributes.setComment(QLatin1String("c"));
  attributes.setInform(QLatin1String("i"));
  showable.setColor({1, 2, 300});
  showable.setVisible(ztCAD_Visible(false));
  EXPECT_EQ(block.name(), QLatin1String("P1"));
  EXPECT_EQ(block.shortName().toString(), QLatin1String("P1"));
  EXPECT_EQ(block.comment(), QLatin1String("c"));
  EXPECT_EQ(block.inform(), QLatin1String("i"));
  EXPECT_EQ(block.color().blue(), 300U);
  EXPECT_EQ(block.visible().value(), false);

  block.setName(QLatin1String("P2"));
  block.setComment(QLatin1String("d"));
  block.setInform(QLatin1String("j"));
  block.setColor({4, 5, 6});
  block.setVisible(ztCAD_Visible(true));
  EXPECT_EQ(attributes.name(), QLatin1String("P2"));
  EXPECT_EQ(attributes.comment(), QLatin1String("d"));
  EXPECT_EQ(attributes.inform(), QLatin1String("j"));
  EXPECT_EQ(showable.color().red(), 4U);
  EXPECT_EQ(showable.visible().value(), true);
  block.setShortName(ztCAD_ShortText(QLatin1String("P3")));
  EXPECT_EQ(attributes.name(), QLatin1String("P3"));
}

TEST(PropertyObjects, StayWhereTheyAre) {
  ztCAD_cmnProperty block;
  const ztCAD_gAttr* const attributes = &std::as_const(block).attributes();
  const ztCAD_gShowable* const showable = &std::as_const(block).showable();
  block.setColor({1000, 0, 0});
  block.setComment(QLatin1String("c"));
  block.setLcs(ztCAD_LCS());
  block.setAttributes(ztCAD_gAttr());
  block.setShowable(ztCAD_gShowable());
  block = ztCAD_cmnProperty();
  read(block, R"(<e name="P1" color="RGB, 1, 2, 300" LCS="CS"/>)");
  EXPECT_EQ(&block.attributes(), attributes);
  EXPECT_EQ(&block.showable(), showable);
  EXPECT_EQ(attributes->name(), QLatin1String("P1"));
  EXPECT_EQ(showable->color().blue(), 300U);
}

TEST(PropertyObjects, KeepTheOutcomeOfTheRead) {
  const ztCAD_cmnProperty fresh;
  EXPECT_TRUE(fresh.attributes().readOk());
  EXPECT_FALSE(fresh.attributes().wasRead());
  const auto named = readFrom<ztCAD_cmnProperty>(R"(<e name="P1"/>)");
  EXPECT_TRUE(named.attributes().readOk());
  EXPECT_TRUE(named.attributes().wasRead());
  const auto unnamed = readFrom<ztCAD_cmnProperty>(R"(<e comment="c"/>)");
  const ztCAD_cmnProperty copy = unnamed;
  for (const ztCAD_cmnProperty* block : {&unnamed, &copy}) {
    EXPECT_FALSE(block->attributes().readOk());
    EXPECT_TRUE(block->attributes().wasRead());
  }
  const auto badColor = readFrom<ztCAD_cmnProperty>(R"(<e name="P1" color="red"/>)");
  EXPECT_TRUE(badColor.attributes().readOk());
  EXPECT_FALSE(badColor.readOk());
}

}  // namespace
