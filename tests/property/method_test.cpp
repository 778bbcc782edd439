#include "property/method.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_gMethod*, ztCAD_INode*>);
static_assert(!std::is_convertible_v<ztCAD_gMethod*, ztCAD_ISerialize*>);

TEST(Method, IsEmptyByDefaultAndStillWritten) {
  EXPECT_EQ(onlyText(ztCAD_gMethod()), "");
  EXPECT_EQ(written(ztCAD_gMethod()), R"(<e method=""/>)");
}

TEST(Method, TextIsTheWordWithoutALabel) {
  EXPECT_EQ(onlyText(ztCAD_gMethod(QString("pointXYZ"))), "pointXYZ");
  EXPECT_EQ(onlyText(ztCAD_gMethod(QString("%1"))), "%1");
}

TEST(Method, KeepsEveryWord) {
  for (const std::string word : {"pointXYZ", "sphere", "triangulation", "polyline", "MIP", "unknownMethod",
                                 "not a word of the format", "", " ", "POINTxyz", "сфера", "%1", "🙂"}) {
    const std::string xml = "<e method=\"" + word + "\"/>";
    ztCAD_gMethod method;
    EXPECT_TRUE(read(method, xml)) << xml;
    EXPECT_EQ(method.method().toStdString(), word);
    EXPECT_EQ(written(method), xml);
  }
}

TEST(Method, AnAbsentMethodFailsAndKeepsTheWord) {
  ztCAD_gMethod method(QString("sphere"));
  EXPECT_FALSE(read(method, R"(<e name="P1" Method="x"/>)"));
  EXPECT_EQ(method.method().toStdString(), "sphere");
}

TEST(Method, AnEmptyMethodIsRead) {
  ztCAD_gMethod method(QString("sphere"));
  EXPECT_TRUE(read(method, R"(<e method=""/>)"));
  EXPECT_EQ(method.method().toStdString(), "");
}

TEST(Method, EveryReadClearsTheFault) {
  for (const char* xml : {R"(<e method="sphere"/>)", "<e/>"}) {
    for (const bool before : {false, true}) {
      ztCAD_gMethod method;
      EXPECT_FALSE(faultAfterReading(method, xml, before)) << xml;
    }
  }
}

TEST(Method, ChangingACopyKeepsTheSource) {
  const ztCAD_gMethod source(QString("sphere"));
  ztCAD_gMethod copy = source;
  copy.setMethod("polyline");
  EXPECT_EQ(source.method().toStdString(), "sphere");
  EXPECT_EQ(copy.method().toStdString(), "polyline");
}

}  // namespace
