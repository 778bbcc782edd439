#include "property/shared_methods.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/vocabulary.h"
#include "node_text.h"
#include "property/base.h"
#include "property/base_parts.h"
#include "xml/dom_backend.h"
#include "xml/plain_xml.h"

namespace {

struct Shape : ztCAD_Base, ztCAD_baseElement {
  Shape() = default;
  explicit Shape(const QString& method) : ztCAD_baseElement(method) {}
};

const char* const usualWords[] = {"pointXYZ", "polyline", "triangulation", "sphere", "MIP", ""};
const char* const unusualWords[] = {"pointxyz",
                                    "sphere ",
                                    " sphere",
                                    "spher",
                                    "spheres",
                                    "mip",
                                    "Sphere",
                                    "\xD1\x84",
                                    " ",
                                    "%1",
                                    "a method of many characters"};

/// The method without making it the element's own.
const ztCAD_gMethod& methodOf(const Shape& shape) { return shape.method(); }
std::string wordOf(const Shape& shape) { return methodOf(shape).method().toStdString(); }

bool isShared(const Shape& shape) { return methodOf(shape).isShared(); }

/// Reads the attribute "method" from a tree or from bytes.
void readMethod(Shape& shape, const std::string& xml, bool fromBytes) {
  bool fault = false;
  const auto visit = [&](const ztcad::ElementView& view) { ztcad::readBaseParts(shape, shape, view, fault); };
  if (fromBytes)
    EXPECT_TRUE(ztcad::readPlainXml(xml, ztcad::XmlBytes::Utf8, visit)) << xml;
  else
    visit(ztcad::DomView(ParsedXml(xml).root));
}

TEST(SharedMethods, ThereIsOneForEachUsualWord) {
  std::vector<const ztCAD_gMethod*> seen;
  for (const char* const word : usualWords) {
    const ztCAD_gMethod* const method = ztcad::sharedMethod(fromUtf8(word));
    ASSERT_NE(method, nullptr) << word;
    EXPECT_EQ(method->method().toStdString(), word);
    EXPECT_TRUE(method->isShared());
    const ztCAD_gMethod copy(*method);  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_FALSE(copy.isShared());
    EXPECT_EQ(copy.method(), method->method());
    EXPECT_EQ(ztcad::sharedMethod(fromUtf8(word)), method) << word;
    for (const ztCAD_gMethod* const other : seen)
      EXPECT_NE(method, other) << word;
    seen.push_back(method);
  }
  EXPECT_EQ(ztcad::sharedMethod(QString()), ztcad::sharedMethod(QLatin1String("")));
}

TEST(SharedMethods, ThereIsNoneForAnyOtherWord) {
  for (const char* const word : unusualWords)
    EXPECT_EQ(ztcad::sharedMethod(fromUtf8(word)), nullptr) << word;
  const ztCAD_gMethod elsewhere(QLatin1String("sphere"));
  EXPECT_FALSE(elsewhere.isShared());
}

TEST(SharedMethods, ElementsWithAUsualWordShareOne) {
  for (const char* const word : usualWords) {
    const Shape one(fromUtf8(word));
    Shape set;
    set.setMethod(ztCAD_gMethod(fromUtf8(word)));
    EXPECT_TRUE(isShared(one)) << word;
    EXPECT_EQ(&methodOf(one), &methodOf(set)) << word;
    EXPECT_EQ(wordOf(one), word);
    const std::string xml = std::string("<e name=\"A\" method=\"") + word + "\"/>";
    for (const bool fromBytes : {false, true}) {
      Shape read(QLatin1String("other"));
      readMethod(read, xml, fromBytes);
      EXPECT_EQ(wordOf(read), word) << fromBytes;
    }
  }
}

TEST(SharedMethods, AnUnusualWordBelongsToItsElement) {
  for (const char* const word : unusualWords) {
    const Shape one(fromUtf8(word));
    const Shape other(fromUtf8(word));
    EXPECT_FALSE(isShared(one)) << word;
    EXPECT_NE(&methodOf(one), &methodOf(other)) << word;
    EXPECT_EQ(wordOf(one), word);
    const Shape copy = one;  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_NE(&methodOf(copy), &methodOf(one)) << word;
    EXPECT_EQ(wordOf(copy), word);
  }
}

TEST(SharedMethods, AChangeBelongsToItsElement) {
  const Shape other(QLatin1String("sphere"));
  Shape shape(QLatin1String("sphere"));
  const Shape copyBefore = shape;
  ztCAD_gMethod& own = shape.method();
  EXPECT_FALSE(own.isShared());
  EXPECT_EQ(own.method(), QLatin1String("sphere")) << "it starts with the shared word";
  own.setMethod(QLatin1String("changed"));
  EXPECT_EQ(wordOf(shape), "changed");
  EXPECT_EQ(&shape.method(), &own) << "it is copied once";
  EXPECT_EQ(wordOf(other), "sphere");
  EXPECT_EQ(wordOf(copyBefore), "sphere");
  EXPECT_EQ(wordOf(Shape(QLatin1String("sphere"))), "sphere");
  const Shape copyAfter = shape;  // NOLINT(performance-unnecessary-copy-initialization)
  own.setMethod(QLatin1String("again"));
  EXPECT_EQ(wordOf(copyAfter), "changed");
}

TEST(SharedMethods, AWordThatAnOwnMethodIsSetToIsNotChangedElsewhere) {
  Shape shape(QLatin1String("odd"));
  shape.method().setMethod(QLatin1String("sphere"));
  EXPECT_EQ(wordOf(shape), "sphere");
  EXPECT_FALSE(isShared(shape));
  const Shape copy = shape;
  shape.method().setMethod(QLatin1String("polyline"));
  EXPECT_EQ(wordOf(copy), "sphere");
}

TEST(SharedMethods, AnyMethodCanBeSetAndAssignedOverAnyOther) {
  for (const char* const before : {"sphere", "polyline", "", "odd", "other odd word"}) {
    for (const char* const after : {"sphere", "polyline", "", "odd", "other odd word"}) {
      for (const bool isOwn : {false, true}) {
        const Shape source(fromUtf8(after));
        Shape set(fromUtf8(before));
        Shape assigned(fromUtf8(before));
        if (isOwn) {
          set.method();
          assigned.method();
        }
        set.setMethod(methodOf(source));
        assigned = source;
        EXPECT_EQ(wordOf(set), after) << before;
        EXPECT_EQ(wordOf(assigned), after) << before;
        set.method().setMethod(QLatin1String("changed"));
        assigned.method().setMethod(QLatin1String("changed"));
        EXPECT_EQ(wordOf(source), after) << before;
        for (const bool fromBytes : {false, true}) {
          Shape read(fromUtf8(before));
          if (isOwn) read.method();
          readMethod(read, std::string("<e method=\"") + after + "\"/>", fromBytes);
          EXPECT_EQ(wordOf(read), after) << before << fromBytes;
        }
      }
    }
  }
}

TEST(SharedMethods, AnElementKeepsItsMethodInAnAssignmentToItself) {
  for (const char* const word : {"sphere", "", "odd"}) {
    for (const bool isOwn : {false, true}) {
      Shape shape(fromUtf8(word));
      if (isOwn) shape.method();
      const Shape& itself = shape;
      shape = itself;
      EXPECT_EQ(wordOf(shape), word);
      shape.setMethod(methodOf(shape));
      EXPECT_EQ(wordOf(shape), word);
      shape.setMethod(shape.method());
      EXPECT_EQ(wordOf(shape), word);
    }
  }
}

// A host may hold the reference that it changed the method by.
TEST(SharedMethods, AnOwnMethodStaysWhereItIs) {
  for (const char* const word : {"sphere", "", "odd"}) {
    Shape shape(QLatin1String("polyline"));
    ztCAD_gMethod* const own = &shape.method();
    shape = Shape(fromUtf8(word));
    ASSERT_EQ(&methodOf(shape), own) << word;
    shape.setMethod(ztCAD_gMethod(QLatin1String("MIP")));
    ASSERT_EQ(&methodOf(shape), own) << word;
    readMethod(shape, R"(<e name="A" method="triangulation"/>)", false);
    ASSERT_EQ(&methodOf(shape), own) << word;
    own->setMethod(QLatin1String("changed"));
    EXPECT_EQ(wordOf(shape), "changed");
  }
}

TEST(SharedMethods, LiveLongerThanTheElements) {
  auto shape = std::make_unique<Shape>(QLatin1String("sphere"));
  auto copy = std::make_unique<Shape>(*shape);
  shape.reset();
  EXPECT_EQ(wordOf(*copy), "sphere");
  copy.reset();
  EXPECT_EQ(wordOf(Shape(QLatin1String("sphere"))), "sphere");
}

// Elements of a host may exist longer than what the library frees when it is unloaded.
TEST(SharedMethods, KeepTheirWordsAfterTheirMemoryIsFreed) {
  const Shape before(QLatin1String("sphere"));
  ztcad::releaseSharedMethods();
  ztcad::releaseSharedMethods();
  EXPECT_TRUE(isShared(before));
  EXPECT_EQ(wordOf(before), "sphere");
  { const Shape copy = before; }  // NOLINT(performance-unnecessary-copy-initialization): it ends safely
  const Shape after(QLatin1String("sphere"));
  EXPECT_EQ(wordOf(after), "sphere");
  EXPECT_TRUE(isShared(after));
}

}  // namespace
