#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "samples.h"
#include "time_growth.h"

// Nested structures: what is refused, what is shared, and that no pointer to a destroyed structure remains.

namespace {

Names nestedIn(const ztCAD_commonStructure& structure) {
  Names names;
  for (const ztCAD_commonStructure* nested : structure.structures())
    names.push_back(nested->name().toStdString());
  return names;
}

ztCAD_Structure* structureNamed(const std::string& name) { return make<ztCAD_Structure>(name); }

const char* const fileOfTwo =
    "<GMD><structure name='outer'><structure name='inner'><point name='P' center='1'/>"
    "</structure></structure></GMD>";

ztCAD_Structure& firstOf(const Document& document) { return ztCAD_getStructures(document.get())->front(); }

TEST(Nesting, StoresPointersInOrder) {
  auto* outer = structureNamed("outer");
  auto* first = structureNamed("first");
  EXPECT_FALSE(addStructureToStructure(first, outer));
  EXPECT_FALSE(addStructureToStructure(make<ztCAD_TmplStructure>("second"), outer));
  EXPECT_EQ(outer->structures().front(), first);
  first->setName("renamed");
  EXPECT_EQ(nestedIn(*outer), (Names{"renamed", "second"}));
}

TEST(Nesting, AStructureInItselfIsRefused) {
  auto* structure = structureNamed("S");
  EXPECT_TRUE(addStructureToStructure(structure, structure));
  EXPECT_TRUE(structure->structures().empty());
}

TEST(Nesting, ACycleIsRefused) {
  auto* a = structureNamed("A");
  auto* b = structureNamed("B");
  auto* c = structureNamed("C");
  EXPECT_FALSE(addStructureToStructure(b, a));
  EXPECT_FALSE(addStructureToStructure(c, b));
  EXPECT_TRUE(addStructureToStructure(a, b));
  EXPECT_TRUE(addStructureToStructure(a, c));
  EXPECT_TRUE(addStructureToStructure(b, c));
  EXPECT_TRUE(c->structures().empty());
  EXPECT_FALSE(addStructureToStructure(c, a)) << "two paths to one structure are not a cycle";
}

TEST(Nesting, ASharedStructureIsSavedInBothHolders) {
  auto* shared = structureNamed("shared");
  auto* one = structureNamed("one");
  auto* other = structureNamed("other");
  EXPECT_FALSE(addStructureToStructure(shared, one));
  EXPECT_FALSE(addStructureToStructure(shared, other));
  addPointToStructure(pointNamed("P"), shared);
  const Document document = newDocument();
  addStructureToDoc(one, document.get());
  addStructureToDoc(other, document.get());
  const std::string bytes = savedBytes(document.get());
  EXPECT_NE(bytes.find("name=\"P\""), bytes.rfind("name=\"P\""));
}

TEST(Nesting, AStructureCanBeNestedTwiceInOneHolder) {
  auto* outer = structureNamed("outer");
  {
    ztCAD_Structure inner;
    inner.setName("twice");
    EXPECT_FALSE(addStructureToStructure(&inner, outer));
    EXPECT_FALSE(addStructureToStructure(&inner, outer));
    EXPECT_EQ(nestedIn(*outer), (Names{"twice", "twice"}));
  }
  EXPECT_TRUE(outer->structures().empty());
}

TEST(Nesting, DeeperThanInAFileIsRefusedAtEitherEnd) {
  auto* inner = structureNamed("S");
  ztCAD_Structure* outer = inner;
  int levels = 1;
  for (; levels < 300; ++levels) {
    auto* next = structureNamed("S");
    if (addStructureToStructure(outer, next)) break;
    outer = next;
  }
  EXPECT_EQ(levels, 255) << "the root is the 256th level";
  EXPECT_TRUE(addStructureToStructure(structureNamed("S"), inner));
  EXPECT_TRUE(addPointToStructure(pointNamed("P"), inner));
  const Document document = newDocument();
  addStructureToDoc(outer, document.get());
  const TemporaryFiles files;
  EXPECT_EQ(loadFile(files.put("a.xml", savedBytes(document.get()))).code, 0);
}

TEST(Nesting, ACopyInADocumentSharesTheNestedStructures) {
  auto* outer = structureNamed("outer");
  auto* inner = structureNamed("inner");
  addStructureToStructure(inner, outer);
  const Document document = newDocument();
  addStructureToDoc(outer, document.get());
  ASSERT_EQ(firstOf(document).structures().size(), 1u);
  EXPECT_EQ(firstOf(document).structures().front(), inner);
}

// -------------------------------------------------------------------------------------- no dangling pointers

TEST(Nesting, AStructureRemovedFromItsDocumentLeavesItsHolders) {
  const Document document = newDocument();
  addStructureToDoc(structureNamed("S"), document.get());
  auto* holder = structureNamed("holder");
  const auto tmpl = std::make_unique<ztCAD_TmplStructure>();
  addStructureToStructure(&firstOf(document), holder);
  addStructureToStructure(&firstOf(document), tmpl.get());
  EXPECT_TRUE(removeStructureFromDoc(&firstOf(document), document.get()));
  EXPECT_TRUE(holder->structures().empty());
  EXPECT_TRUE(tmpl->structures().empty());
}

TEST(Nesting, StructuresOfADeletedDocumentLeaveOtherDocuments) {
  const Document living = newDocument();
  addStructureToDoc(structureNamed("holder"), living.get());
  Document ending = newDocument();
  addStructureToDoc(structureNamed("S"), ending.get());
  addStructureToStructure(&firstOf(ending), &firstOf(living));
  EXPECT_EQ(nestedIn(firstOf(living)), Names{"S"});
  ending.reset();
  EXPECT_TRUE(firstOf(living).structures().empty());
  EXPECT_EQ(savedBytes(living.get()).find("name=\"S\""), std::string::npos);
}

TEST(Nesting, ClearRemovesReadStructuresFromOpenDocuments) {
  const Parsed parsed = parse(fileOfTwo);
  const auto made = std::make_unique<ztCAD_Structure>(firstOf(parsed.document));
  EXPECT_EQ(nestedIn(*made), Names{"inner"});
  ClearGMDDoc();
  EXPECT_EQ(namesIn(ztCAD_getStructures(parsed.document.get())), Names{"outer"});
  EXPECT_TRUE(firstOf(parsed.document).structures().empty());
  EXPECT_TRUE(made->structures().empty());
  EXPECT_EQ(savedBytes(parsed.document.get()).find("inner"), std::string::npos);
}

TEST(Nesting, DeletingAnotherDocumentRemovesReadStructures) {
  const Parsed living = parse(fileOfTwo);
  {
    const Parsed ending = parse(fileOfTwo);
    EXPECT_EQ(nestedIn(firstOf(living.document)), Names{"inner"});
  }
  EXPECT_TRUE(firstOf(living.document).structures().empty());
  EXPECT_TRUE(checkGMDDocument(living.document.get()));
}

TEST(Nesting, UpdateRemovesReadStructuresOfOtherDocuments) {
  const TemporaryFiles files;
  const std::string file = files.put("a.xml", fileOfTwo);
  const Loaded other = loadFile(file);
  const Loaded updated = loadFile(file);
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(updated.document.get(), file, code, fault);
  EXPECT_EQ(code, 0);
  EXPECT_FALSE(fault);
  EXPECT_TRUE(firstOf(other.document).structures().empty());
  EXPECT_EQ(nestedIn(firstOf(updated.document)), Names{"inner"});
}

TEST(Nesting, AFailedUpdateRemovesReadStructures) {
  const Parsed parsed = parse(fileOfTwo);
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(parsed.document.get(), "", code, fault);
  EXPECT_EQ(code, 100);
  EXPECT_EQ(namesIn(ztCAD_getStructures(parsed.document.get())), Names{"outer"});
  EXPECT_TRUE(firstOf(parsed.document).structures().empty());
}

TEST(Nesting, LoadingAgainReplacesTheContent) {
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", fileOfTwo));
  const ztCAD_commonStructure* first = firstOf(loaded.document).structures().front();
  std::int32_t code = -1;
  bool fault = true;
  EXPECT_TRUE(loaded.document->loadFromFile(files.path("a.xml"), code, fault));
  EXPECT_EQ(nestedIn(firstOf(loaded.document)), Names{"inner"});
  EXPECT_NE(firstOf(loaded.document).structures().front(), first);
}

TEST(Nesting, DestroyingAHolderKeepsWhatItHeld) {
  auto* inner = structureNamed("inner");
  {
    ztCAD_Structure holder;
    addStructureToStructure(inner, &holder);
  }
  EXPECT_EQ(inner->name(), QString("inner"));
  EXPECT_FALSE(addStructureToStructure(structureNamed("later"), inner));
}

/// Nests one structure in `count` holders and destroys the structure, then the holders.
void shareAmongHolders(int count) {
  const Document document = newDocument();
  {
    ztCAD_Structure shared;
    for (int i = 0; i < count; ++i)
      document->content().structures.appendNew().addStructure(shared);
  }
  for (const ztCAD_Structure& holder : *ztCAD_getStructures(document.get()))
    ASSERT_TRUE(holder.structures().empty());
}

TEST(Nesting, TimeIsLinearInTheNumberOfHolders) {
  EXPECT_LT(timeGrowth(5000, shareAmongHolders), linearTimeGrowth);
}

TEST(Nesting, AssignmentFromAHolderClosesNoCycle) {
  ztCAD_Structure inner;
  ztCAD_Structure middle;
  ztCAD_Structure outer;
  ztCAD_Structure beside;
  middle.addStructure(inner);
  outer.addStructure(beside);
  outer.addStructure(middle);
  outer.setName("outer");
  addPointToStructure(pointNamed("P"), &outer);
  inner = outer;
  EXPECT_EQ(inner.name(), QString("outer"));
  EXPECT_EQ(namesIn(&inner.content().points), Names{"P"});
  ASSERT_EQ(inner.structures().size(), 1u);
  EXPECT_EQ(inner.structures().front(), &beside);
}

}  // namespace
