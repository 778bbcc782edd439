#include "core/numbered_name.h"

#include <gtest/gtest.h>

namespace {

ztCAD_ShortText held(const QString& text) { return ztCAD_ShortText(text); }
ztCAD_ShortText held(const char* text) { return held(QString::fromUtf8(text)); }

const char* const names[] = {"",
                             "A",
                             "Точка",
                             "A_$",
                             "A_$1",
                             "thirteen char",
                             "fourteen chars",
                             "fifteen charact",
                             "sixteen characte",
                             "a name of more than thirty-one characters"};

TEST(NumberedName, IsTheNameASeparatorAndTheNumber) {
  for (const char* const name : names)
    for (const unsigned number : {1U, 9U, 10U, 123456U, 4294967295U})
      EXPECT_EQ(ztcad::textOf(held(name), number).toString(),
                QString::fromUtf8(name) + QLatin1String("_$") + QString::number(number));
}

TEST(NumberedName, IsTakenApart) {
  for (const char* const name : names)
    for (const unsigned number : {1U, 9U, 10U, 123456U, 4294967295U}) {
      const auto numbered = ztcad::numberedNameOf(ztcad::textOf(held(name), number));
      ASSERT_TRUE(numbered) << name;
      EXPECT_EQ(numbered->name, held(name)) << name;
      EXPECT_EQ(numbered->number, number) << name;
    }
}

TEST(NumberedName, HasANumberWithoutLeadingZeros) {
  for (const char* const name : {"", "A", "fifteen charact", "Точка"})
    for (const char* const ending :
         {"", "1", "_$", "_$0", "_$01", "_$-1", "_$+1", "_$ 1", "_$1 ", "_$1a", "_1", "$1", "_$4294967296",
          "_$99999999999999999999", "_$\u0661", "_$\u00b9"})
      EXPECT_FALSE(ztcad::numberedNameOf(held(QString::fromUtf8(name) + QString::fromUtf8(ending))))
          << name << ending;
}

}  // namespace
