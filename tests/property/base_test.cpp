#include "property/base.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <utility>

#include "node_text.h"
#include "property/base_parts.h"
#include "xml/dom_backend.h"

namespace {

struct Named : ztCAD_Base {
  Named() = default;
  Named(const QString& name, bool& nameIsFree) : ztCAD_Base(name, nameIsFree) {}
};

struct Shape : ztCAD_baseElement {
  Shape() = default;
  explicit Shape(const QString& method) : ztCAD_baseElement(method) {}
};

static_assert(!std::is_constructible_v<ztCAD_Base>, "base classes cannot be instantiated");
static_assert(!std::is_constructible_v<ztCAD_baseElement>, "base classes cannot be instantiated");
static_assert(std::has_virtual_destructor_v<ztCAD_Base>);
static_assert(std::has_virtual_destructor_v<ztCAD_baseElement>);

const char* const emptyText = "attr=(name=, comment=, inform=) ,color=visible=";

// ------------------------------------------------------------------------------------------------------ base

TEST(Base, HasAnEmptyPropertyBlockByDefault) {
  const Named named;
  EXPECT_EQ(onlyText(named.property()), emptyText);
  EXPECT_EQ(named.name(), "");
}

TEST(Base, EveryNameIsReportedFree) {
  for (int i = 0; i < 2; ++i) {
    for (const char* name : {"", "P1", "Точка", "🙂", "%1"}) {
      bool nameIsFree = false;
      const Named named(name, nameIsFree);
      EXPECT_TRUE(nameIsFree) << name;
      EXPECT_EQ(named.name().toStdString(), name);
      EXPECT_EQ(named.property().attributes().name().toStdString(), name);
    }
  }
}

TEST(Base, TheNameIsStoredInThePropertyBlock) {
  Named named;
  named.setName("A");
  EXPECT_EQ(named.property().attributes().name().toStdString(), "A");
  named.property().attributes().setName("B");
  EXPECT_EQ(named.name().toStdString(), "B");
}

TEST(Base, SettingThePropertyReplacesTheWholeBlock) {
  ztCAD_cmnProperty property;
  property.attributes().setName("P1");
  property.showable().setVisible(ztCAD_Visible(false));
  Named named;
  named.setName("before");
  named.property().attributes().setComment("before");
  named.setProperty(property);
  EXPECT_EQ(onlyText(named.property()),
            "attr=(name=P1, comment=, inform=) ,color=visible=visible=falsefalse");
  named.setProperty(named.property());
  EXPECT_EQ(named.name().toStdString(), "P1");
}

TEST(Base, IsSameOnlyAsItself) {
  Named named;
  const Named copy = named;
  EXPECT_TRUE(named.isSame(&named));
  EXPECT_FALSE(named.isSame(&copy));
  EXPECT_FALSE(copy.isSame(&named));
  EXPECT_FALSE(named.isSame(nullptr));
}

TEST(Base, ChangingACopyKeepsTheSource) {
  Named source;
  source.setName("P1");
  Named copy = source;
  copy.setName("P2");
  copy.property().setLcs(ztCAD_LCS());
  EXPECT_EQ(onlyText(source.property()), "attr=(name=P1, comment=, inform=) ,color=visible=");
  EXPECT_FALSE(source.property().hasLCS());
  Named assigned;
  assigned = source;
  assigned.setName("P3");
  EXPECT_EQ(source.name().toStdString(), "P1");
}

// -------------------------------------------------------------------------------------------- display method

TEST(BaseElement, HasAnEmptyMethodByDefault) { EXPECT_EQ(Shape().method().method(), ""); }

TEST(BaseElement, HasTheMethodPassedToItsConstructor) {
  EXPECT_EQ(Shape("sphere").method().method().toStdString(), "sphere");
}

TEST(BaseElement, ChangingACopyKeepsTheSource) {
  const Shape source("sphere");
  Shape copy = source;
  EXPECT_NE(&copy.method(), &source.method());
  EXPECT_EQ(copy.method().method().toStdString(), "sphere");
  copy.method().setMethod("other");
  EXPECT_EQ(source.method().method().toStdString(), "sphere");
}

TEST(BaseElement, AssignmentCopiesIntoTheExistingMethod) {
  const Shape source("sphere");
  Shape assigned("polyline");
  const ztCAD_gMethod* const itsMethod = &assigned.method();
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_EQ(&assigned.method(), itsMethod);
  EXPECT_EQ(assigned.method().method().toStdString(), "sphere");
  assigned.method().setMethod("other");
  EXPECT_EQ(source.method().method().toStdString(), "sphere");
}

TEST(BaseElement, AssignmentToItselfChangesNothing) {
  Shape shape("sphere");
  const Shape& itself = shape;
  shape = itself;
  EXPECT_EQ(shape.method().method().toStdString(), "sphere");
}

TEST(BaseElement, AMovedFromElementStillHasAMethod) {
  Shape source("sphere");
  const Shape taken = std::move(source);
  EXPECT_EQ(taken.method().method().toStdString(), "sphere");
  source.method().setMethod("again");  // NOLINT(bugprone-use-after-move): allowed, the method is never null
  EXPECT_EQ(source.method().method().toStdString(), "again");
}

// --------------------------------------------------------------------------------- both bases of one element

struct NamedShape : Named, Shape {
  using Shape::Shape;
};

bool readBaseParts(NamedShape& shape, const std::string& xml, bool& fault) {
  return ztcad::readBaseParts(shape, shape, ztcad::DomView(ParsedXml(xml).root), fault);
}

TEST(BaseClasses, WritePropertyBlockAndMethod) {
  NamedShape shape("sphere");
  shape.setName("S1");
  ParsedXml xml("<e/>");
  ztcad::DomSink sink(xml.root, xml.document);
  ztcad::writeBaseParts(shape, shape, sink);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(),
            R"(<e color="" comment="" inform="" method="sphere" name="S1"/>)");
}

TEST(BaseClasses, APresentMethodIsRead) {
  NamedShape shape("sphere");
  bool fault = true;
  EXPECT_TRUE(readBaseParts(shape, R"(<e method="other" name="S1"/>)", fault));
  EXPECT_FALSE(fault);
  EXPECT_EQ(shape.method().method().toStdString(), "other");
  EXPECT_EQ(shape.name().toStdString(), "S1");
}

TEST(BaseClasses, AnAbsentMethodIsNotAFailure) {
  NamedShape shape("sphere");
  bool fault = true;
  EXPECT_TRUE(readBaseParts(shape, R"(<e name="S1"/>)", fault));
  EXPECT_FALSE(fault);
  EXPECT_EQ(shape.method().method().toStdString(), "sphere");
}

TEST(BaseClasses, OnlyThePropertyBlockDeterminesSuccess) {
  for (const char* xml : {R"(<e method="other"/>)", R"(<e method="other" name="S1" color="red"/>)"}) {
    NamedShape shape("sphere");
    bool fault = true;
    EXPECT_FALSE(readBaseParts(shape, xml, fault)) << xml;
    EXPECT_FALSE(fault) << xml;
    EXPECT_EQ(shape.method().method().toStdString(), "other") << xml;
  }
}

}  // namespace
