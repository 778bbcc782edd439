#include "core/document/check.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <string>

#include "sample_documents.h"

namespace {

TEST(Check, OfPointsRequiresUniqueNamesOfTemplatePointsOnly) {
  struct Row {
    const char* name;
    Names points;
    Names templatePoints;
    bool passes;
  };
  const Row rows[] = {
      {"empty document", {}, {}, true},
      {"one of each", {"A"}, {"B"}, true},
      {"two template points of one name", {}, {"A", "A"}, false},
      {"not adjacent", {}, {"A", "B", "A"}, false},
      {"two empty names", {}, {"", ""}, false},
      {"point and template point of one name", {"A"}, {"A"}, true},
      {"two points of one name", {"A", "A"}, {}, true},
      {"names that differ in case", {}, {"a", "A"}, true},
      {"Cyrillic and Latin letters that look alike", {}, {"\xD0\x90", "A"}, true},
      {"Cyrillic", {}, {"Ё", "Ё"}, false},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    addPoints(document, row.points);
    addTemplatePoints(document, row.templatePoints);
    EXPECT_EQ(ztcad::passesCheck(document.content()), row.passes) << row.name;
  }
}

// Most names are distinguished by their hashes alone, so many names are needed to test that equal ones are
// still found.
TEST(Check, FindsOneDuplicateAmongManyNames) {
  constexpr std::size_t count = 20000;
  const auto nameAt = [](std::size_t i) { return "P" + std::to_string(i); };
  Names names(count);
  for (std::size_t i = 0; i < count; ++i)
    names[i] = nameAt(i);
  const auto passes = [&names] {
    ztCAD_GMDDocument document("");
    addTemplatePoints(document, names);
    return ztcad::passesCheck(document.content());
  };
  EXPECT_TRUE(passes());
  for (const std::size_t first : {std::size_t{0}, count / 2, count - 2})
    for (const std::size_t second : {first + 1, count - 1}) {
      names[second] = nameAt(first);
      EXPECT_FALSE(passes()) << first << " and " << second;
      names[second] = nameAt(second);
    }
}

TEST(Check, ChangesNoName) {
  ztCAD_GMDDocument document("");
  addTemplatePoints(document, {"A", "A"});
  EXPECT_FALSE(ztcad::passesCheck(document.content()));
  EXPECT_EQ(namesIn(document.content().templatePoints), (Names{"A", "A"}));
}

TEST(Check, IgnoresIncompletePoints) {
  ztCAD_GMDDocument document("");
  document.content().points.appendNew();
  document.content().templatePoints.appendNew();
  EXPECT_TRUE(ztcad::passesCheck(document.content()));
}

TEST(Check, RequiresUniqueNamesOfFourKindsOfTemplates) {
  const Names checked = {"template_structure", "template_detail", "templatePoint", "templateElementMIP"};
  const ztCAD_DocumentContent every;
  forEachKind(every, [&](const char* kind, const auto&) {
    ztCAD_GMDDocument document("");
    forEachKind(document.content(), [kind](const std::string& other, auto& elements) {
      if (other != kind) return;
      elements.appendNew().setName("A");
      elements.appendNew().setName("B");
      elements.appendNew().setName("A");
    });
    const bool isChecked = std::find(checked.begin(), checked.end(), kind) != checked.end();
    EXPECT_EQ(ztcad::passesCheck(document.content()), !isChecked) << kind;
  });
}

TEST(Check, TemplatesOfDifferentKindsCanHaveTheSameName) {
  ztCAD_GMDDocument document("");
  forEachKind(document.content(), [](const char*, auto& elements) { elements.appendNew().setName("A"); });
  EXPECT_TRUE(ztcad::passesCheck(document.content()));
}

TEST(Check, ALineWithAnIncompleteVertexFails) {
  struct Row {
    std::size_t coordinates;
    bool passes;
  };
  for (const Row& row : {Row{0, true}, Row{6, true}, Row{7, false}, Row{8, false}, Row{9, true}}) {
    ztCAD_GMDDocument document("");
    ztCAD_Vertices vertices;
    vertices.setCoordinates(std::vector<double>(row.coordinates, 1.0));
    document.content().structures.appendNew().content().lines.appendNew().setVertices(vertices);
    EXPECT_EQ(ztcad::passesCheck(document.content()), row.passes) << row.coordinates;
  }
}

TEST(Check, AnUnsoundStructureYieldsCode120) {
  const std::string mip = " MIP='MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10'";
  const std::string lists = "<vertices>0, 0, 0;</vertices><faces>0, 0, 0;</faces>";
  struct Row {
    const char* name;
    std::string inside;  ///< content of the structure
    bool passes;
    bool fault;
  };
  const Row rows[] = {
      {"nothing", "", true, false},
      {"good point", "<point name='A' center='1'/>", true, false},
      {"point without center", "<point name='A'/>", false, true},
      {"point without name", "<point center='1'/>", false, true},
      {"good sphere", "<solid name='A' method='sphere' center='1' radius='1'/>", true, false},
      {"sphere without radius", "<solid name='A' method='sphere' center='1'/>", false, true},
      {"good solid", "<solid name='A' method='triangulation'>" + lists + "</solid>", true, false},
      {"solid without faces", "<solid name='A' method='triangulation'><vertices/></solid>", false, true},
      {"solid without method is ignored", "<solid name='A'/>", true, true},
      {"line without method is ignored", "<line name='A'/>", true, false},
      {"line without vertices", "<line name='A' method='polyline'/>", true, true},
      {"good mass-inertia element", "<elementMIP name='A' method='MIP'" + mip + "/>", true, false},
      {"mass-inertia element without data", "<elementMIP name='A' method='MIP'/>", false, true},
      {"other method of mass-inertia elements", "<elementMIP name='A'/>", true, false},
      {"good detail", "<detail name='A'" + mip + "/>", true, false},
      {"detail without mass-inertia data", "<detail name='A'/>", false, true},
      {"detail with a solid without method", "<detail name='A'" + mip + "><solid/></detail>", false, true},
      {"detail with a bad point", "<detail name='A'" + mip + "><point/></detail>", false, true},
      {"detail with a reference", "<detail name='A'" + mip + "><pointRef/></detail>", true, false},
      {"empty references", "<pointRef/><lineRef/><solidRef/><elementMipRef/><detailRef/><structureRef/>",
       true, false},
      {"good nested structure", "<structure name='A'/>", true, false},
      {"nested structure without name", "<structure/>", true, true},
      {"nested structure with a bad point", "<structure name='A'><point/></structure>", false, true},
      {"nested template structure is ignored", "<template_structure><point/></template_structure>", true,
       false},
      {"unknown element", "<header/><templatePoint/><other/>", true, false},
      {"bad point before a good one", "<point name='A'/><point name='B' center='1'/>", false, true},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    const FileLoad load =
        loadBytes(document, documentWith("<structure name='S'>" + row.inside + "</structure>"));
    EXPECT_EQ(load.code, row.passes ? 0 : 120) << row.name;
    EXPECT_EQ(load.fault, row.fault) << row.name;
    EXPECT_TRUE(load.read) << row.name;
    EXPECT_EQ(ztcad::passesCheck(document.content()), row.passes) << row.name;
    const FileLoad tmpl = loadBytes(
        document, documentWith("<template_structure name='S'>" + row.inside + "</template_structure>"));
    EXPECT_EQ(tmpl.code, 0) << "template structures are not checked: " << row.name;
    EXPECT_EQ(tmpl.fault, row.fault) << row.name;
  }
}

TEST(Check, AStructureWithoutNameOrWithABadColourPasses) {
  ztCAD_GMDDocument document("");
  const FileLoad load = loadBytes(document, documentWith("<structure/><structure name='A' color='red'/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
}

TEST(Check, UnsoundElementsUnderTheRootPass) {
  ztCAD_GMDDocument document("");
  const FileLoad load =
      loadBytes(document, documentWith("<point/><detail/><solid method='sphere'/><template_detail/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_TRUE(load.fault);
}

}  // namespace
