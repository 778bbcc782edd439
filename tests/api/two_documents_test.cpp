#include <gtest/gtest.h>
#include <string>

#include "samples.h"

// Two documents at the same time. Nested structures created by reading are kept in one list of the process,
// which deleting any document clears; everything else belongs to its document.

namespace {

const std::string nestedXml = R"(<GMD><point name="P" center="1, 2, 3;"/>
  <structure name="S" LCS=""><point name="Q" center="4, 5, 6;"/>
    <structure name="read"><structure name="deeper"/></structure></structure>
  <template_structure name="T"><structure name="read in a template"/></template_structure></GMD>)";

std::size_t nestedIn(const ztCAD_commonStructure& structure) { return structure.structures().size(); }

TEST(TwoDocuments, DeletingOneRemovesReadStructuresFromTheOther) {
  Document first = parse(nestedXml).document;
  const Document second = parse(nestedXml).document;
  ztCAD_Structure& structure = ztCAD_getStructures(second.get())->front();
  ztCAD_TmplStructure& templateStructure = ztCAD_getTmplStructures(second.get())->front();
  ASSERT_EQ(nestedIn(structure), 1U);
  ASSERT_EQ(nestedIn(templateStructure), 1U);

  first.reset();
  EXPECT_EQ(nestedIn(structure), 0U);
  EXPECT_EQ(nestedIn(templateStructure), 0U);
}

TEST(TwoDocuments, DeletingOneKeepsTheTopLevelOfTheOther) {
  Document first = parse(nestedXml).document;
  const Document second = parse(nestedXml).document;
  first.reset();
  EXPECT_EQ(namesIn(ztCAD_getPoints(second.get())), Names{"P"});
  EXPECT_EQ(namesIn(ztCAD_getStructures(second.get())), Names{"S"});
  EXPECT_EQ(namesIn(ztCAD_getTmplStructures(second.get())), Names{"T"});
  EXPECT_EQ(namesIn(&ztCAD_getStructures(second.get())->front().content().points), Names{"Q"});
  EXPECT_TRUE(checkGMDDocument(second.get()));

  const Parsed again = parse(savedBytes(second.get()));
  EXPECT_TRUE(again.parsed);
  EXPECT_EQ(namesIn(&ztCAD_getStructures(again.document.get())->front().content().points), Names{"Q"});
}

TEST(TwoDocuments, StructuresNestedByTheHostStayNested) {
  ztCAD_Structure* const outer = make<ztCAD_Structure>("outer");
  ASSERT_FALSE(addStructureToStructure(make<ztCAD_Structure>("inner"), outer));
  const Document document = newDocument();
  ASSERT_FALSE(addStructureToDoc(outer, document.get()));
  Document other = parse(nestedXml).document;
  other.reset();
  ClearGMDDoc();
  EXPECT_EQ(nestedIn(ztCAD_getStructures(document.get())->front()), 1U);
}

TEST(TwoDocuments, UpdatingOneRemovesReadStructuresFromTheOther) {
  const TemporaryFiles files;
  const Document first = parse(nestedXml).document;
  const Document second = newDocument();
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(second.get(), files.put("nested.xml", nestedXml), code, fault);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(nestedIn(ztCAD_getStructures(first.get())->front()), 0U);
  EXPECT_EQ(nestedIn(ztCAD_getStructures(second.get())->front()), 1U);
}

}  // namespace
