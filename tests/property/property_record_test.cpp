#include "property/property_record.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "node_text.h"
#include "property/apply_record.h"
#include "property/base.h"

namespace {

struct Named : ztCAD_Base {
  Named() { setName("P1"); }
};

Named filled() {
  Named element;
  element.property().attributes().setComment("old comment");
  element.property().attributes().setInform("old inform");
  element.property().showable().setColor({7, 8, 9});
  element.property().showable().setVisible(ztCAD_Visible(true));
  element.property().setLcs(ztCAD_LCS(true, std::vector<double>(12, 7.0)));
  return element;
}

const char* const filledText =
    "attr=(name=P1, comment=old comment, inform=old inform) ,color=RGB, 7, 8, 9visible=visible=truetrueCS, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7";

template <typename Record>
std::string textAfter(const Record& record, Named element) {
  ztcad::apply(record, element);
  return onlyText(element.property());
}

CommonProperty fullRecord() {
  CommonProperty record;
  record.comment = "c";
  record.inform = "i";
  record.color = ztCAD_Color(1, 2, 3);
  record.visible = ztCAD_Visible(false);
  record.lcs = ztCAD_LCS(true, std::vector<double>(12, 1.0));
  return record;
}

const char* const fullRecordText =
    "attr=(name=P1, comment=c, inform=i) ,color=RGB, 1, 2, 3visible=visible=falsefalseCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1";

TEST(CommonPropertyRecord, IsEmptyByDefault) {
  const CommonProperty record;
  EXPECT_EQ(record.comment, "");
  EXPECT_EQ(record.inform, "");
  EXPECT_FALSE(record.color.isSet());
  EXPECT_FALSE(record.visible.isSet());
  EXPECT_EQ(record.lcs, std::nullopt);
}

TEST(CommonPropertyRecord, FillsAnEmptyElementAndKeepsItsName) {
  EXPECT_EQ(textAfter(fullRecord(), Named()), fullRecordText);
}

TEST(CommonPropertyRecord, ReplacesThePropertiesOfTheElement) {
  EXPECT_EQ(textAfter(fullRecord(), filled()), fullRecordText);
}

TEST(CommonPropertyRecord, AnEmptyRecordClearsAllButNameAndCoordinateSystem) {
  EXPECT_EQ(textAfter(CommonProperty(), filled()),
            "attr=(name=P1, comment=, inform=) ,color=visible=CS, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7");
}

TEST(CommonPropertyRecord, AnEmptyCoordinateSystemReplacesTheOldOne) {
  CommonProperty record;
  record.lcs = ztCAD_LCS(false, {});
  Named element = filled();
  ztcad::apply(record, element);
  ASSERT_TRUE(element.property().hasLCS());
  EXPECT_TRUE(element.property().lcs()->values().empty());
  EXPECT_FALSE(element.property().lcs()->isLocal());
}

TEST(CommonPropertyRecord, ApplyingIsNotAReadOfTheElement) {
  Named element;
  ztcad::apply(fullRecord(), element);
  EXPECT_FALSE(element.property().wasRead());
}

TEST(CommonPropertyRecord, TextsAreUtf8OrWindows1251) {
  CommonProperty record;
  record.comment = "Ось 🙂 %1";
  record.inform = "\xCE\xF1\xFC";
  EXPECT_EQ(textAfter(record, Named()),
            "attr=(name=P1, comment=Ось 🙂 %1, inform=Ось) ,color=visible=");
}

TEST(CommonPropertyRecord, TheElementDoesNotReferToTheRecord) {
  auto record = std::make_optional(fullRecord());
  Named element;
  ztcad::apply(*record, element);
  record->lcs->setValues({});
  record.reset();
  EXPECT_EQ(onlyText(element.property()), fullRecordText);
}

TEST(MipPropertyRecord, IsEmptyByDefault) {
  const CommonPropertyForMIP record;
  EXPECT_EQ(record.comment, "");
  EXPECT_EQ(record.inform, "");
  EXPECT_EQ(record.lcs, std::nullopt);
}

TEST(MipPropertyRecord, KeepsColorAndVisibility) {
  CommonPropertyForMIP record;
  record.comment = "c";
  record.inform = "i";
  record.lcs = ztCAD_LCS(true, std::vector<double>(12, 1.0));
  EXPECT_EQ(
      textAfter(record, filled()),
      "attr=(name=P1, comment=c, inform=i) ,color=RGB, 7, 8, 9visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1");
}

TEST(MipPropertyRecord, AnEmptyRecordClearsOnlyTheTexts) {
  EXPECT_EQ(
      textAfter(CommonPropertyForMIP(), filled()),
      "attr=(name=P1, comment=, inform=) ,color=RGB, 7, 8, 9visible=visible=truetrueCS, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7");
}

TEST(CommonPropertyRecord, TheFilledElementHasEveryProperty) {
  EXPECT_EQ(onlyText(filled().property()), filledText);
}

}  // namespace
