#include <gtest/gtest.h>
#include <algorithm>
#include <string>

#include "core/document/unification.h"
#include "sample_documents.h"

// Documents that hold every kind of element: what is read, and the order in text and file.

namespace {

std::string joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts)
    all += text + '\n';
  return all;
}

void expectOneOfEachKind(const ztCAD_DocumentContent& content) {
  forEachKind(content, [](const char* kind, const auto& elements) {
    EXPECT_EQ(namesIn(elements), Names{kind}) << kind;
  });
}

void expectNothing(const ztCAD_DocumentContent& content) {
  forEachKind(content, [](const char* kind, const auto& elements) { EXPECT_TRUE(elements.empty()) << kind; });
  EXPECT_TRUE(content.stubs.empty());
}

/// Checks that the text contains each part exactly once, in this order.
void expectInOrder(const std::string& text, const std::vector<std::string>& parts) {
  std::size_t at = 0;
  for (const std::string& part : parts) {
    const std::size_t found = text.find(part);
    ASSERT_NE(found, std::string::npos) << part << " in\n" << text;
    EXPECT_EQ(text.rfind(part), found) << part;
    EXPECT_GE(found, at) << part << " in\n" << text;
    at = found;
  }
}

TEST(Content, OfANewDocumentIsEmpty) {
  const ztCAD_GMDDocument document("");
  expectNothing(document.content());
}

TEST(Content, EveryKindIsReadInAnyOrder) {
  std::vector<std::string> elements = oneOfEachKind();
  for (int turn = 0; turn < 2; ++turn) {
    ztCAD_GMDDocument document("");
    const FileLoad load = loadBytes(document, documentWith(joined(elements)));
    EXPECT_EQ(load.code, 0);
    EXPECT_FALSE(load.fault);
    expectOneOfEachKind(document.content());
    std::reverse(elements.begin(), elements.end());
  }
}

TEST(Content, EveryKindIsReadFromAString) {
  ztCAD_GMDDocument document("");
  EXPECT_TRUE(loadString(document, documentWith(joined(oneOfEachKind()))).parsed);
  expectOneOfEachKind(document.content());
}

TEST(Content, LoadingReplacesEveryKind) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith(joined(oneOfEachKind())));
  loadString(document, documentWith(joined(oneOfEachKind())));
  expectOneOfEachKind(document.content());
  EXPECT_EQ(loadBytes(document, documentWith("")).code, 0);
  expectNothing(document.content());
}

TEST(Content, AFileThatDoesNotLoadLeavesEveryKind) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith(joined(oneOfEachKind())));
  EXPECT_EQ(loadBytes(document, "<other/>").code, 120);
  EXPECT_EQ(loadBytes(document, "<GMD>").code, 110);
  EXPECT_EQ(loadFile(document, "").code, 100);
  expectOneOfEachKind(document.content());
}

TEST(Content, SwapExchangesEveryKind) {
  ztCAD_GMDDocument one("");
  ztCAD_GMDDocument other("");
  loadString(one, documentWith(joined(oneOfEachKind())));
  one.content().swap(other.content());
  expectNothing(one.content());
  expectOneOfEachKind(other.content());
}

TEST(Content, ElementsOfUnknownMethodUnderTheRootAreIgnored) {
  ztCAD_GMDDocument document("");
  const FileLoad load = loadBytes(
      document,
      documentWith("<line name='A'/><line name='A' method='spline'/><line name='A' method='Polyline'/>"
                   "<elementMIP name='A'/><elementMIP name='A' method='mip'/>"
                   "<solid name='A'/><solid name='A' method='brep'/><solid name='A' method=''/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
  expectNothing(document.content());
}

TEST(Content, UnknownTagsUnderTheRootAreIgnored) {
  ztCAD_GMDDocument document("");
  const FileLoad load =
      loadBytes(document, documentWith("<sphere name='A'/><triangle name='A'/><GMD/>"
                                       "<templateDetail name='A'/><templateStructure name='A'/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
  expectNothing(document.content());
}

TEST(Content, AnElementThatCannotBeReadRaisesTheFaultAndIsKept) {
  struct Row {
    const char* kind;
    const char* element;
    bool fault;
  };
  const Row rows[] = {
      {"structure", "<structure><point/></structure>", true},
      {"structureRef", "<structureRef/>", false},
      {"template_structure", "<template_structure><solid/></template_structure>", true},
      {"point", "<point/>", true},
      {"line", "<line method='polyline'/>", true},
      {"sphere", "<solid method='sphere'/>", true},
      {"solid", "<solid method='triangulation'/>", true},
      {"elementMIP", "<elementMIP method='MIP'/>", true},
      {"detail", "<detail/>", true},
      {"detailRef", "<detailRef/>", false},
      {"template_detail", "<template_detail/>", true},
      {"templatePoint", "<templatePoint/>", true},
      {"pointRef", "<pointRef/>", false},
      {"templateLine", "<templateLine/>", true},
      {"lineRef", "<lineRef/>", false},
      {"templateElementMIP", "<templateElementMIP/>", true},
      {"elementMipRef", "<elementMipRef/>", false},
      {"templateSolid", "<templateSolid/>", true},
      {"solidRef", "<solidRef/>", false},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    EXPECT_EQ(loadBytes(document, documentWith(row.element)).fault, row.fault) << row.kind;
    forEachKind(document.content(), [&](const std::string& kind, const auto& elements) {
      EXPECT_EQ(elements.size(), kind == row.kind ? 1u : 0u) << row.kind << " in " << kind;
    });
  }
}

TEST(Content, IsSavedInFileOrder) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith("<header inform='header'/>" + joined(oneOfEachKind())));
  const auto named = [](const char* name) { return " name=\"" + std::string(name) + "\""; };
  expectInOrder(savedBytes(document), {"<header inform=",
                                       named("templatePoint"),
                                       named("point"),
                                       named("pointRef"),
                                       named("templateLine"),
                                       named("line"),
                                       named("lineRef"),
                                       named("elementMIP"),
                                       named("templateElementMIP"),
                                       named("elementMipRef"),
                                       named("sphere"),
                                       named("solid"),
                                       named("templateSolid"),
                                       named("solidRef"),
                                       named("detail"),
                                       named("detailRef"),
                                       named("structureRef"),
                                       named("structure"),
                                       named("template_detail"),
                                       named("template_structure")});
}

TEST(Content, TextListsTheKindsInTextOrderWithoutTemplateSolidsAndSolidReferences) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith(joined(oneOfEachKind())));
  const auto named = [](const char* name) { return "(name=" + std::string(name) + ","; };
  const std::string text = textOf(document);
  expectInOrder(
      text, {named("point"), named("templatePoint"), named("pointRef"), named("line"), named("templateLine"),
             named("lineRef"), named("elementMIP"), named("templateElementMIP"), named("elementMipRef"),
             "\nstructure, LCS, ", named("structureRef"), "\ntemplate_structure, MCS, ", named("sphere"),
             named("solid"), named("detail"), named("detailRef"), named("template_detail")});
  EXPECT_EQ(text.find("templateSolid"), std::string::npos);
  EXPECT_EQ(text.find("solidRef"), std::string::npos);
}

TEST(Content, SavedBytesLoadAndSaveToTheSameBytes) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith(joined(oneOfEachKind())));
  const std::string bytes = savedBytes(document);
  EXPECT_EQ(loadBytes(document, bytes).code, 0);
  expectOneOfEachKind(document.content());
  EXPECT_EQ(savedBytes(document), bytes);
}

TEST(Content, ADetailWithoutMassInertiaDataIsReadBackAsUnsound) {
  ztCAD_GMDDocument document("");
  document.content().details.appendNew().content().points.add(pointNamed("P"));
  const FileLoad load = loadBytes(document, savedBytes(document));
  EXPECT_TRUE(load.fault);
  ASSERT_EQ(document.content().details.size(), 1u);
  EXPECT_FALSE(document.content().details.front().passesCheck());
  EXPECT_EQ(namesIn(document.content().details.front().content().points), Names{"P"});
}

TEST(Content, NestedTemplateStructuresAreSavedButNotReadBack) {
  ztCAD_GMDDocument document("");
  const std::string nested =
      "<template_structure name='T'><structure name='N'><point name='P' center='1'/></structure>"
      "</template_structure>";
  EXPECT_EQ(loadBytes(document, documentWith(nested)).code, 0);
  ASSERT_EQ(document.content().templateStructures.front().structures().size(), 1u);
  const auto* inside = document.content().templateStructures.front().structures().front();
  EXPECT_NE(dynamic_cast<const ztCAD_TmplStructure*>(inside), nullptr);
  const std::string first = savedBytes(document);
  EXPECT_NE(first.find("      <template_structure "), std::string::npos) << first;
  const FileLoad load = loadBytes(document, first);
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
  EXPECT_TRUE(document.content().templateStructures.front().structures().empty());
}

}  // namespace
