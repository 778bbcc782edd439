#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <type_traits>

#include "samples.h"

// Every door into documents and structures, kind by kind: copies go in, identity decides what goes out.

namespace {

template <typename Door>
using ElementOf = typename std::decay_t<Door>::Element;

TEST(DocumentContents, AddingStoresACopyAndAnswersFalse) {
  forEachDocumentDoor([](const auto& door) {
    SCOPED_TRACE(door.kind);
    const Document document = newDocument();
    auto* element = make<ElementOf<decltype(door)>>("A");
    EXPECT_FALSE(door.add(element, document.get()));
    element->setName("changed");
    EXPECT_FALSE(door.add(element, document.get()));
    EXPECT_EQ(namesIn(door.get(document.get())), (Names{"A", "changed"}));
  });
}

TEST(DocumentContents, EachKindHasAContainerOfItsOwn) {
  const Document document = newDocument();
  int kinds = 0;
  forEachDocumentDoor([&](const auto& door) {
    EXPECT_TRUE(door.get(document.get())->empty()) << door.kind;
    door.add(make<ElementOf<decltype(door)>>(door.kind), document.get());
    ++kinds;
  });
  EXPECT_EQ(kinds, 17);
  forEachDocumentDoor(
      [&](const auto& door) { EXPECT_EQ(namesIn(door.get(document.get())), Names{door.kind}) << door.kind; });
  EXPECT_TRUE(ztCAD_getDetails(document.get())->empty());
  EXPECT_TRUE(ztCAD_getTmplDetails(document.get())->empty());
}

TEST(DocumentContents, GetterGivesTheContainerItself) {
  const Document document = newDocument();
  forEachDocumentDoor([&](const auto& door) {
    door.get(document.get())->add(*make<ElementOf<decltype(door)>>("A"));
    EXPECT_EQ(namesIn(door.get(document.get())), Names{"A"}) << door.kind;
    EXPECT_EQ(door.get(document.get()), door.get(document.get())) << door.kind;
  });
  EXPECT_EQ(ztCAD_getDetails(document.get()), &document->content().details);
  EXPECT_EQ(ztCAD_getTmplDetails(document.get()), &document->content().templateDetails);
}

TEST(DocumentContents, StoredElementMayBeAddedAgain) {
  forEachDocumentDoor([](const auto& door) {
    const Document document = newDocument();
    door.add(make<ElementOf<decltype(door)>>("A"), document.get());
    EXPECT_FALSE(door.add(&door.get(document.get())->front(), document.get())) << door.kind;
    EXPECT_EQ(namesIn(door.get(document.get())), (Names{"A", "A"})) << door.kind;
  });
}

TEST(DocumentContents, PointerThatCreationReturnedRemovesNothing) {
  forEachDocumentDoor([](const auto& door) {
    if (!door.remove) return;
    const Document document = newDocument();
    const auto* element = make<ElementOf<decltype(door)>>("A");
    door.add(element, document.get());
    EXPECT_FALSE(door.remove(element, document.get())) << door.kind;
    EXPECT_EQ(namesIn(door.get(document.get())), Names{"A"}) << door.kind;
  });
}

TEST(DocumentContents, PointerFromTheContainerRemovesThatElementOnce) {
  int kinds = 0;
  forEachDocumentDoor([&](const auto& door) {
    if (!door.remove) return;
    ++kinds;
    SCOPED_TRACE(door.kind);
    const Document document = newDocument();
    const Document other = newDocument();
    for (const char* name : {"A", "B", "C"})
      door.add(make<ElementOf<decltype(door)>>(name), document.get());
    const auto* second = &*std::next(door.get(document.get())->begin());
    EXPECT_FALSE(door.remove(second, other.get()));
    EXPECT_TRUE(door.remove(second, document.get()));
    EXPECT_EQ(namesIn(door.get(document.get())), (Names{"A", "C"}));
    EXPECT_FALSE(door.remove(second, document.get()));
  });
  EXPECT_EQ(kinds, 7);
}

TEST(DocumentContents, WhatIsBuiltPassesTheCheckAndIsSavedAndLoadsAgain) {
  const Document document = newDocument("all kinds");
  forEachDocumentDoor(
      [&](const auto& door) { door.add(make<ElementOf<decltype(door)>>(door.kind), document.get()); });
  EXPECT_TRUE(checkGMDDocument(document.get()));
  const std::string bytes = savedBytes(document.get());
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", bytes));
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  forEachDocumentDoor([&](const auto& door) {
    EXPECT_EQ(namesIn(door.get(loaded.document.get())), Names{door.kind}) << door.kind;
  });
}

TEST(StructureContents, AddingStoresACopyAndAnswersFalse) {
  int kinds = 0;
  forEachStructureDoor([&](const auto& door) {
    ++kinds;
    SCOPED_TRACE(door.kind);
    for (ztCAD_commonStructure* structure :
         {static_cast<ztCAD_commonStructure*>(make<ztCAD_Structure>("S")),
          static_cast<ztCAD_commonStructure*>(make<ztCAD_TmplStructure>("S"))}) {
      auto* element = make<ElementOf<decltype(door)>>("A");
      EXPECT_FALSE(door.add(element, structure));
      element->setName("changed");
      EXPECT_FALSE(door.add(element, structure));
      EXPECT_EQ(namesIn(&(structure->content().*door.container)), (Names{"A", "changed"}));
    }
  });
  EXPECT_EQ(kinds, 11);
}

TEST(StructureContents, StructureOfADocumentTakesElementsInPlace) {
  const Document document = newDocument();
  auto* created = make<ztCAD_Structure>("S");
  addStructureToDoc(created, document.get());
  addPointToStructure(make<ztCAD_Point>("late"), created);
  ztCAD_Structure& stored = ztCAD_getStructures(document.get())->front();
  EXPECT_TRUE(stored.content().points.empty());
  EXPECT_FALSE(addPointToStructure(make<ztCAD_Point>("P"), &stored));
  EXPECT_NE(savedBytes(document.get()).find("name=\"P\""), std::string::npos);
}

TEST(StructureContents, OneOfEveryKindIsSavedInTheOrderOfFilesAndLoadsAgain) {
  const Document document = newDocument();
  auto* structure = make<ztCAD_Structure>("S");
  addStructureToStructure(make<ztCAD_Structure>("nested"), structure);
  forEachStructureDoor(
      [&](const auto& door) { door.add(make<ElementOf<decltype(door)>>(door.kind), structure); });
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
  forEachStructureDoor([&](const auto& door) {
    EXPECT_EQ(namesIn(&(again.content().*door.container)), Names{door.kind}) << door.kind;
  });
}

TEST(StructureContents, TooDeepAnElementIsRefused) {
  // the root, 254 structures, then one level is left: room for a point, not for a line with its list
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
