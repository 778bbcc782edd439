#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <type_traits>

#include "samples.h"

// Adding elements of every kind to documents and structures, and removing them: adding copies the element,
// removal identifies it by its address.

namespace {

template <typename Kind>
using ElementOf = typename std::decay_t<Kind>::Element;

TEST(DocumentContents, AddingStoresACopyAndReturnsFalse) {
  forEachDocumentKind([](const auto& kind) {
    SCOPED_TRACE(kind.name);
    const Document document = newDocument();
    auto* element = make<ElementOf<decltype(kind)>>("A");
    EXPECT_FALSE(kind.add(element, document.get()));
    element->setName("changed");
    EXPECT_FALSE(kind.add(element, document.get()));
    EXPECT_EQ(namesIn(kind.get(document.get())), (Names{"A", "changed"}));
  });
}

TEST(DocumentContents, EachKindHasItsOwnContainer) {
  const Document document = newDocument();
  int kinds = 0;
  forEachDocumentKind([&](const auto& kind) {
    EXPECT_TRUE(kind.get(document.get())->empty()) << kind.name;
    kind.add(make<ElementOf<decltype(kind)>>(kind.name), document.get());
    ++kinds;
  });
  EXPECT_EQ(kinds, 17);
  forEachDocumentKind(
      [&](const auto& kind) { EXPECT_EQ(namesIn(kind.get(document.get())), Names{kind.name}) << kind.name; });
  EXPECT_TRUE(ztCAD_getDetails(document.get())->empty());
  EXPECT_TRUE(ztCAD_getTmplDetails(document.get())->empty());
}

TEST(DocumentContents, GetterReturnsTheContainerItself) {
  const Document document = newDocument();
  forEachDocumentKind([&](const auto& kind) {
    kind.get(document.get())->add(*make<ElementOf<decltype(kind)>>("A"));
    EXPECT_EQ(namesIn(kind.get(document.get())), Names{"A"}) << kind.name;
    EXPECT_EQ(kind.get(document.get()), kind.get(document.get())) << kind.name;
  });
  EXPECT_EQ(ztCAD_getDetails(document.get()), &document->content().details);
  EXPECT_EQ(ztCAD_getTmplDetails(document.get()), &document->content().templateDetails);
}

TEST(DocumentContents, StoredElementCanBeAddedAgain) {
  forEachDocumentKind([](const auto& kind) {
    const Document document = newDocument();
    kind.add(make<ElementOf<decltype(kind)>>("A"), document.get());
    EXPECT_FALSE(kind.add(&kind.get(document.get())->front(), document.get())) << kind.name;
    EXPECT_EQ(namesIn(kind.get(document.get())), (Names{"A", "A"})) << kind.name;
  });
}

TEST(DocumentContents, CreatedElementRemovesNothing) {
  forEachDocumentKind([](const auto& kind) {
    if (!kind.remove) return;
    const Document document = newDocument();
    const auto* element = make<ElementOf<decltype(kind)>>("A");
    kind.add(element, document.get());
    EXPECT_FALSE(kind.remove(element, document.get())) << kind.name;
    EXPECT_EQ(namesIn(kind.get(document.get())), Names{"A"}) << kind.name;
  });
}

TEST(DocumentContents, StoredElementIsRemovedOnce) {
  int kinds = 0;
  forEachDocumentKind([&](const auto& kind) {
    if (!kind.remove) return;
    ++kinds;
    SCOPED_TRACE(kind.name);
    const Document document = newDocument();
    const Document other = newDocument();
    for (const char* name : {"A", "B", "C"})
      kind.add(make<ElementOf<decltype(kind)>>(name), document.get());
    const auto* second = &*std::next(kind.get(document.get())->begin());
    EXPECT_FALSE(kind.remove(second, other.get()));
    EXPECT_TRUE(kind.remove(second, document.get()));
    EXPECT_EQ(namesIn(kind.get(document.get())), (Names{"A", "C"}));
    EXPECT_FALSE(kind.remove(second, document.get()));
  });
  EXPECT_EQ(kinds, 7);
}

TEST(DocumentContents, DocumentOfAllKindsPassesTheCheckAndLoadsAfterSaving) {
  const Document document = newDocument("all kinds");
  forEachDocumentKind(
      [&](const auto& kind) { kind.add(make<ElementOf<decltype(kind)>>(kind.name), document.get()); });
  EXPECT_TRUE(checkGMDDocument(document.get()));
  const std::string bytes = savedBytes(document.get());
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", bytes));
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  forEachDocumentKind([&](const auto& kind) {
    EXPECT_EQ(namesIn(kind.get(loaded.document.get())), Names{kind.name}) << kind.name;
  });
}

TEST(StructureContents, AddingStoresACopyAndReturnsFalse) {
  int kinds = 0;
  forEachStructureKind([&](const auto& kind) {
    ++kinds;
    SCOPED_TRACE(kind.name);
    for (ztCAD_commonStructure* structure :
         {static_cast<ztCAD_commonStructure*>(make<ztCAD_Structure>("S")),
          static_cast<ztCAD_commonStructure*>(make<ztCAD_TmplStructure>("S"))}) {
      auto* element = make<ElementOf<decltype(kind)>>("A");
      EXPECT_FALSE(kind.add(element, structure));
      element->setName("changed");
      EXPECT_FALSE(kind.add(element, structure));
      EXPECT_EQ(namesIn(&(structure->content().*kind.container)), (Names{"A", "changed"}));
    }
  });
  EXPECT_EQ(kinds, 11);
}

TEST(StructureContents, ElementsAreAddedToTheStructureInTheDocument) {
  const Document document = newDocument();
  auto* created = make<ztCAD_Structure>("S");
  addStructureToDoc(created, document.get());
  addPointToStructure(make<ztCAD_Point>("late"), created);
  ztCAD_Structure& stored = ztCAD_getStructures(document.get())->front();
  EXPECT_TRUE(stored.content().points.empty());
  EXPECT_FALSE(addPointToStructure(make<ztCAD_Point>("P"), &stored));
  EXPECT_NE(savedBytes(document.get()).find("name=\"P\""), std::string::npos);
}

TEST(StructureContents, KindsAreSavedInFileOrderAndLoadAgain) {
  const Document document = newDocument();
  auto* structure = make<ztCAD_Structure>("S");
  addStructureToStructure(make<ztCAD_Structure>("nested"), structure);
  forEachStructureKind(
      [&](const auto& kind) { kind.add(make<ElementOf<decltype(kind)>>(kind.name), structure); });
  addStructureToDoc(structure, document.get());
  EXPECT_TRUE(checkGMDDocument(document.get()));
  const std::string bytes = savedBytes(document.get());
  std::size_t at = 0;
  for (const char* name : {"point", "point reference", "line", "line reference", "mass-inertia element",
                           "mass-inertia reference", "sphere", "solid", "solid reference", "detail reference",
                           "nested", "structure reference"}) {
    const std::size_t found = bytes.find("name=\"" + std::string(name) + "\"");
    ASSERT_NE(found, std::string::npos) << name;
    EXPECT_GT(found, at) << name;
    at = found;
  }
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", bytes));
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(savedBytes(loaded.document.get()), savedBytes(loadFile(files.path("a.xml")).document.get()));
  const ztCAD_Structure& again = ztCAD_getStructures(loaded.document.get())->front();
  forEachStructureKind([&](const auto& kind) {
    EXPECT_EQ(namesIn(&(again.content().*kind.container)), Names{kind.name}) << kind.name;
  });
}

TEST(StructureContents, ElementsNestedTooDeepAreRefused) {
  // the root and 254 structures leave one level: enough for a point, not for a line with its list
  auto* innermost = make<ztCAD_Structure>("innermost");
  ztCAD_Structure* outer = innermost;
  for (int i = 1; i < 254; ++i) {
    auto* next = make<ztCAD_Structure>("S");
    ASSERT_FALSE(addStructureToStructure(outer, next)) << i;
    outer = next;
  }
  EXPECT_FALSE(addPointToStructure(make<ztCAD_Point>("P"), innermost));
  EXPECT_TRUE(addPolylineToStructure(make<ztCAD_Line>("L"), innermost));
  EXPECT_TRUE(addTriangleToStructure(make<ztCAD_Triangle>("T"), innermost));
  EXPECT_TRUE(innermost->content().lines.empty());
  const Document document = newDocument();
  addStructureToDoc(outer, document.get());
  const TemporaryFiles files;
  EXPECT_EQ(loadFile(files.put("a.xml", savedBytes(document.get()))).code, 0);
}

}  // namespace
