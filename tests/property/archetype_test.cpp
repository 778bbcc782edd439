#include "property/archetype.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_gArche*, ztCAD_INode*>);
static_assert(!std::is_convertible_v<ztCAD_gArche*, ztCAD_ISerialize*>);

ztCAD_gArche archetype(const std::string& templateName, const std::string& file) {
  ztCAD_gArche arche;
  arche.setTemplateName(fromUtf8(templateName));
  arche.setFile(fromUtf8(file));
  return arche;
}

TEST(Archetype, IsEmptyByDefaultAndStillWritten) {
  EXPECT_EQ(onlyText(ztCAD_gArche()), "arche(template=, file=)");
  EXPECT_EQ(written(ztCAD_gArche()), R"(<e file="" template=""/>)");
}

TEST(Archetype, MissingAttributesAreReadAsEmpty) {
  ztCAD_gArche arche = archetype("earlier", "earlier");
  EXPECT_TRUE(read(arche, R"(<e name="R1"/>)"));
  EXPECT_EQ(text(arche, false), "arche(template=, file=)");
}

TEST(Archetype, ReadsEachAttributeIndependently) {
  EXPECT_EQ(roundTrip<ztCAD_gArche>(R"(<e template="T"/>)"), R"(<e file="" template="T"/>)");
  EXPECT_EQ(roundTrip<ztCAD_gArche>(R"(<e file="a.xml"/>)"), R"(<e file="a.xml" template=""/>)");
  EXPECT_EQ(roundTrip<ztCAD_gArche>(R"(<e template="T" file="a.xml"/>)"),
            R"(<e file="a.xml" template="T"/>)");
  EXPECT_EQ(roundTrip<ztCAD_gArche>(R"(<e file="a.xml" Template="x" template="T"/>)"),
            R"(<e file="a.xml" template="T"/>)");
}

TEST(Archetype, KeepsNonAsciiLettersQuotesAndPlaceholders) {
  for (const std::string xml :
       {R"(<e file="C:\модель\файл.xml" template="Шаблон"/>)", R"(<e file="&quot;a&quot;" template="it's"/>)",
        R"(<e file="%2" template="%1"/>)", R"(<e file="🙂.xml" template="🙂"/>)"})
    EXPECT_EQ(roundTrip<ztCAD_gArche>(xml), xml);
}

TEST(Archetype, TextContainsTemplateAndFile) {
  EXPECT_EQ(onlyText(archetype("T", "a.xml")), "arche(template=T, file=a.xml)");
  EXPECT_EQ(onlyText(archetype("%2", "%1")), "arche(template=%2, file=%1)");
  EXPECT_EQ(onlyText(archetype("Шаблон", "🙂")), "arche(template=Шаблон, file=🙂)");
}

TEST(Archetype, EveryReadClearsTheFault) {
  for (const char* xml : {R"(<e template="T" file="f"/>)", "<e/>"}) {
    for (const bool before : {false, true}) {
      ztCAD_gArche arche;
      EXPECT_FALSE(faultAfterReading(arche, xml, before)) << xml;
    }
  }
}

TEST(Archetype, ChangingACopyKeepsTheSource) {
  const ztCAD_gArche source = archetype("T", "a.xml");
  ztCAD_gArche copy = source;
  copy.setTemplateName("U");
  copy.setFile("b.xml");
  EXPECT_EQ(text(source, false), "arche(template=T, file=a.xml)");
  EXPECT_EQ(text(copy, false), "arche(template=U, file=b.xml)");
}

}  // namespace
