#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "samples.h"

// Access to elements by kind and index, compared with the containers that hold them.

namespace {

/// The guarantee of c/types.h: an element and its base classes have the same address.
template <typename Base, typename Element>
void expectSameAddress(const Element* element) {
  ASSERT_NE(element, nullptr);
  EXPECT_EQ(static_cast<const void*>(static_cast<const Base*>(element)), static_cast<const void*>(element));
}

TEST(CountedContents, ElementsAndTheirBasesHaveTheSameAddress) {
  forEachDocumentKind([](auto kind) {
    using Element = typename decltype(kind)::Element;
    SCOPED_TRACE(kind.name);
    expectSameAddress<ztCAD_Base>(make<Element>("A"));
  });
  const auto detail = std::make_unique<ztCAD_Detail>();
  const auto templateDetail = std::make_unique<ztCAD_TmplDetail>();
  expectSameAddress<ztCAD_Base>(detail.get());
  expectSameAddress<ztCAD_Base>(templateDetail.get());
  expectSameAddress<ztCAD_cmnDetail>(detail.get());
  expectSameAddress<ztCAD_cmnDetail>(templateDetail.get());
  expectSameAddress<ztCAD_commonPoint>(make<ztCAD_Point>("A"));
  expectSameAddress<ztCAD_commonPoint>(make<ztCAD_TmplPoint>("A"));
  expectSameAddress<ztCAD_commonLine>(make<ztCAD_Line>("A"));
  expectSameAddress<ztCAD_commonLine>(make<ztCAD_TmplLine>("A"));
  expectSameAddress<ztCAD_commonTriangle>(make<ztCAD_Triangle>("A"));
  expectSameAddress<ztCAD_commonTriangle>(make<ztCAD_TmplTriangle>("A"));
  expectSameAddress<ztCAD_commonStructure>(make<ztCAD_Structure>("A"));
  expectSameAddress<ztCAD_commonStructure>(make<ztCAD_TmplStructure>("A"));
}

TEST(CountedContents, KindNumbersEqualThoseOfTheClasses) {
  EXPECT_EQ(int{ztCAD_ElementDetail}, int{ztCAD_KindDetail});
  EXPECT_EQ(int{ztCAD_ElementTmplDetail}, int{ztCAD_KindTmplDetail});
  EXPECT_EQ(int{ztCAD_ElementStructure}, int{ztCAD_KindStructure});
  EXPECT_EQ(int{ztCAD_ElementTmplStructure}, int{ztCAD_KindTmplStructure});
  EXPECT_EQ(int{ztCAD_ElementPoint}, int{ztCAD_KindPoint});
  EXPECT_EQ(int{ztCAD_ElementTmplPoint}, int{ztCAD_KindTmplPoint});
  EXPECT_EQ(int{ztCAD_ElementLine}, int{ztCAD_KindLine});
  EXPECT_EQ(int{ztCAD_ElementTmplLine}, int{ztCAD_KindTmplLine});
  EXPECT_EQ(int{ztCAD_ElementElementMIP}, int{ztCAD_KindElementMIP});
  EXPECT_EQ(int{ztCAD_ElementTmplElementMIP}, int{ztCAD_KindTmplElementMIP});
  EXPECT_EQ(int{ztCAD_ElementTriangle}, int{ztCAD_KindTriangle});
  EXPECT_EQ(int{ztCAD_ElementTmplTriangle}, int{ztCAD_KindTmplTriangle});
}

TEST(CountedContents, AddAndAppendUseTheContainerOfTheKind) {
  forEachDocumentKind([](auto kind) {
    using Element = typename decltype(kind)::Element;
    SCOPED_TRACE(kind.name);
    const Document document = newDocument();
    Element* const element = make<Element>("first");
    const std::int32_t number = ztCAD_getKind(element);
    EXPECT_NE(number, ztCAD_ElementNone);
    EXPECT_FALSE(ztCAD_addToDoc(element, document.get()));
    EXPECT_FALSE(kind.add(make<Element>("second"), document.get()));
    ztCAD_Base* const appended = ztCAD_appendToDoc(document.get(), number);
    ASSERT_NE(appended, nullptr);
    EXPECT_EQ(ztCAD_getKind(appended), number);

    ztCAD_Cont<Element>& container = *kind.get(document.get());
    ASSERT_EQ(container.size(), 3u);
    EXPECT_EQ(ztCAD_countInDoc(document.get(), number), 3);
    EXPECT_EQ(static_cast<ztCAD_Base*>(&container.back()), appended);
    EXPECT_EQ(ztCAD_getFromDoc(document.get(), number, 0), &container.front());
    EXPECT_NE(ztCAD_getFromDoc(document.get(), number, 0), element) << "adding stores a copy";
    EXPECT_EQ(container.front().name(), QString("first"));
    EXPECT_TRUE(ztCAD_removeFromDoc(appended, document.get(), number));
    EXPECT_FALSE(ztCAD_removeFromDoc(element, document.get(), number));
    EXPECT_EQ(container.size(), 2u);
  });
}

TEST(CountedContents, IndexAndListFollowTheContainer) {
  const Document document = newDocument();
  constexpr std::int32_t count = 7;
  for (std::int32_t i = 0; i < count; ++i)
    addPointToDoc(pointNamed("P" + std::to_string(i)), document.get());
  std::vector<ztCAD_Base*> listed(count + 1, nullptr);
  EXPECT_EQ(ztCAD_listDoc(document.get(), ztCAD_ElementPoint, listed.data(), count + 1), count);
  EXPECT_EQ(listed.back(), nullptr);
  std::int32_t index = 0;
  for (ztCAD_Point& point : *ztCAD_getPoints(document.get())) {
    EXPECT_EQ(ztCAD_getFromDoc(document.get(), ztCAD_ElementPoint, index), &point) << index;
    EXPECT_EQ(listed[index], &point) << index;
    ++index;
  }
  EXPECT_EQ(index, count);
}

/// The innermost of nested structures below which a file allows `levels` more levels.
ztCAD_Structure* innermostWithLevelsLeft(int levels) {
  constexpr int deepest = 256;  // the root is the first level
  ztCAD_Structure* structure = make<ztCAD_Structure>("outermost");
  for (int level = 2; level < deepest - levels; ++level) {
    auto* const inner = ztCAD_appendToStructure(structure, ztCAD_ElementStructure);
    structure = static_cast<ztCAD_Structure*>(inner);
    if (!structure) return nullptr;
  }
  return structure;
}

TEST(CountedContents, ElementsNestedTooDeepAreNotAppended) {
  const std::int32_t levelsOf[][2] = {
      {ztCAD_ElementPoint, 1},     {ztCAD_ElementSphere, 1},   {ztCAD_ElementPointRef, 1},
      {ztCAD_ElementStructure, 1}, {ztCAD_ElementTriangle, 2}, {ztCAD_ElementLine, 2},
      {ztCAD_ElementDetail, 3},
  };
  for (int left = 0; left <= 3; ++left) {
    ztCAD_Structure* const structure = innermostWithLevelsLeft(left);
    ASSERT_NE(structure, nullptr);
    for (const auto& [kind, levels] : levelsOf)
      EXPECT_EQ(ztCAD_appendToStructure(structure, kind) != nullptr, levels <= left)
          << "kind " << kind << ", levels left: " << left;
  }
}

TEST(CountedContents, NestedStructuresAreAddedByPointer) {
  auto* const outer = make<ztCAD_Structure>("outer");
  auto* const inner = make<ztCAD_TmplStructure>("inner");
  EXPECT_FALSE(ztCAD_addToStructure(inner, outer));
  EXPECT_EQ(ztCAD_getFromStructure(outer, ztCAD_ElementStructure, 0), inner);
  EXPECT_EQ(ztCAD_countInStructure(outer, ztCAD_ElementTmplStructure), 0);
  EXPECT_EQ(ztCAD_getKind(inner), ztCAD_ElementTmplStructure);
}

TEST(CountedContents, RemovingANestedStructureEndsOneOfItsNestings) {
  auto* const outer = make<ztCAD_Structure>("outer");
  auto* const inner = make<ztCAD_Structure>("inner");
  auto* const other = make<ztCAD_Structure>("other");
  for (ztCAD_Structure* const nested : {inner, other, inner})
    EXPECT_FALSE(ztCAD_addToStructure(nested, outer));
  EXPECT_TRUE(ztCAD_removeFromStructure(inner, outer, ztCAD_ElementStructure));
  EXPECT_EQ(ztCAD_countInStructure(outer, ztCAD_ElementStructure), 2);
  EXPECT_TRUE(ztCAD_addToStructure(outer, inner)) << "still nested once, so this would close a cycle";
  EXPECT_TRUE(ztCAD_removeFromStructure(inner, outer, ztCAD_ElementStructure));
  EXPECT_FALSE(ztCAD_removeFromStructure(inner, outer, ztCAD_ElementStructure));
  EXPECT_EQ(ztCAD_getFromStructure(outer, ztCAD_ElementStructure, 0), other);
  EXPECT_FALSE(ztCAD_addToStructure(outer, inner)) << "no longer nested";
  EXPECT_EQ(inner->name(), QString("inner"));
}

TEST(CountedContents, ACloneHoldsCopiesOfAllContent) {
  auto* const outer = make<ztCAD_Structure>("outer");
  ztCAD_setName(ztCAD_appendToStructure(outer, ztCAD_ElementStructure), "A");
  ztCAD_setName(ztCAD_appendToStructure(outer, ztCAD_ElementPoint), "A");
  ztCAD_commonStructure* const clone = ztCAD_cloneStructure(outer);
  ASSERT_NE(clone, nullptr);
  ztCAD_unifyNames(clone);
  EXPECT_EQ(ztCAD_getFromStructure(clone, ztCAD_ElementPoint, 0)->name(), QString("A_$1"));
  EXPECT_EQ(ztCAD_getFromStructure(outer, ztCAD_ElementPoint, 0)->name(), QString("A"));
  EXPECT_NE(ztCAD_getFromStructure(clone, ztCAD_ElementStructure, 0),
            ztCAD_getFromStructure(outer, ztCAD_ElementStructure, 0));
  ClearGMDDoc();
}

TEST(CountedContents, AnAppendedStructureOutlivesOtherDocuments) {
  auto* const outer = make<ztCAD_Structure>("outer");
  ztCAD_appendToStructure(outer, ztCAD_ElementStructure);
  ClearGMDDoc();
  EXPECT_EQ(ztCAD_countInStructure(outer, ztCAD_ElementStructure), 1);
}

}  // namespace
