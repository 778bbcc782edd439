#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "samples.h"

// How creation functions and setters treat their arguments. Points are tested in points_test.cpp.

namespace {

using Reals = std::vector<double>;
using Indices = std::vector<std::uint32_t>;

/// Coordinates of tetrahedronVertices().
const Reals corners = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};

template <typename Element>
void expectAnyNameIsAccepted(const char* kind) {
  struct Row {
    const char* name;
    std::string given;
    const char* kept;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"Cyrillic in UTF-8", "Ёж", "Ёж"},
      {"Cyrillic in windows-1251", "\xA8\xE6", "Ёж"},
      {"leading digit", "1 a", "1 a"},
      {"generated name", "A_$1", "A_$1"},
      {"placeholder", "%1", "%1"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(make<Element>(row.given)->name(), QString(row.kept)) << kind << ", " << row.name;
}

TEST(Elements, OfEveryKindAcceptAnyName) {
  forEachDocumentKind([](const auto& kind) {
    using Element = typename std::decay_t<decltype(kind)>::Element;
    expectAnyNameIsAccepted<Element>(kind.name);
  });
}

TEST(Elements, AcceptNullTerminatedNames) {
  bool nameIsFree = false;
  const ztCAD_TmplDetail detail;
  EXPECT_EQ(crtTriangle_nostl("Ёж", tetrahedronVertices(), tetrahedronFaces(), nameIsFree)->name(),
            QString("Ёж"));
  EXPECT_EQ(crtStructure_nostl("Ёж", crtLCS(twelveValues), nameIsFree)->name(), QString("Ёж"));
  EXPECT_EQ(crtTmplStructure_nostl("Ёж", make<ztCAD_Structure>("S"), nameIsFree)->name(), QString("Ёж"));
  EXPECT_EQ(
      crtStructureRef_nostl("Ёж", crtLCS(twelveValues), make<ztCAD_TmplStructure>("T"), nameIsFree)->name(),
      QString("Ёж"));
  EXPECT_EQ(crtDetailRef_nostl("Ёж", crtLCS(twelveValues), &detail, nameIsFree)->name(), QString("Ёж"));
}

/// Calls a creation function twice with the same name; the flag must be set to true each time.
template <typename Create>
void expectNameFreeTwice(const char* function, Create&& create) {
  for (int i = 0; i < 2; ++i) {
    bool nameIsFree = false;
    EXPECT_NE(create("same", nameIsFree), nullptr) << function;
    EXPECT_TRUE(nameIsFree) << function;
  }
}

TEST(Elements, ADuplicateNameIsReportedAsFree) {
  const auto* vertices = tetrahedronVertices();
  const auto* faces = tetrahedronFaces();
  const auto* lcs = crtLCS(twelveValues);
  const ztCAD_TmplDetail detail;
  using Name = const char*;
  expectNameFreeTwice("crtPolyline", [&](Name n, bool& f) { return crtPolyline(n, vertices, f); });
  expectNameFreeTwice("crtTmplLine",
                      [&](Name n, bool& f) { return crtTmplLine(n, make<ztCAD_Line>("s"), f); });
  expectNameFreeTwice("crtSphere", [&](Name n, bool& f) { return crtSphere(n, coord(0, 0, 0), 1, f); });
  expectNameFreeTwice("crtTriangle", [&](Name n, bool& f) { return crtTriangle(n, vertices, faces, f); });
  expectNameFreeTwice("crtTmplTriangle",
                      [&](Name n, bool& f) { return crtTmplTriangle(n, make<ztCAD_Triangle>("s"), f); });
  expectNameFreeTwice("crtStructure", [&](Name n, bool& f) { return crtStructure(n, lcs, f); });
  expectNameFreeTwice("crtTmplStructure",
                      [&](Name n, bool& f) { return crtTmplStructure(n, make<ztCAD_Structure>("s"), f); });
  expectNameFreeTwice("crtPointRef",
                      [&](Name n, bool& f) { return crtPointRef(n, lcs, make<ztCAD_TmplPoint>("t"), f); });
  expectNameFreeTwice("crtLineRef",
                      [&](Name n, bool& f) { return crtLineRef(n, lcs, make<ztCAD_TmplLine>("t"), f); });
  expectNameFreeTwice("crtTriangleRef", [&](Name n, bool& f) {
    return crtTriangleRef(n, lcs, make<ztCAD_TmplTriangle>("t"), f);
  });
  expectNameFreeTwice("crtElementMipRef", [&](Name n, bool& f) {
    return crtElementMipRef(n, lcs, make<ztCAD_TmplElementMIP>("t"), f);
  });
  expectNameFreeTwice("crtStructureRef", [&](Name n, bool& f) {
    return crtStructureRef(n, lcs, make<ztCAD_TmplStructure>("t"), f);
  });
  expectNameFreeTwice("crtDetailRef", [&](Name n, bool& f) { return crtDetailRef(n, lcs, &detail, f); });
}

// -------------------------------------------------------------------------------------------------- geometry

TEST(Lines, CopyTheirVertices) {
  ztCAD_Vertices* vertices = tetrahedronVertices();
  bool nameIsFree = false;
  const ztCAD_Line* line = crtPolyline("L", vertices, nameIsFree);
  addVertex(crtVertexByCoord(coord(9, 9, 9)), vertices);
  EXPECT_EQ(line->vertices().coordinates(), corners);
  EXPECT_TRUE(line->hasWholeVertices());
  EXPECT_FALSE(line->readOk());
}

TEST(Lines, CanBeEmpty) {
  bool nameIsFree = false;
  EXPECT_TRUE(crtPolyline("L", crtVertices(), nameIsFree)->vertices().coordinates().empty());
}

TEST(Lines, TemplateCopiesOnlyTheVertices) {
  ztCAD_Line* source = make<ztCAD_Line>("source");
  source->property().attributes().setComment("c");
  bool nameIsFree = false;
  const ztCAD_TmplLine* made = crtTmplLine("made", source, nameIsFree);
  const ztCAD_TmplLine* again = crtTmplLine("again", made, nameIsFree);
  for (const ztCAD_TmplLine* line : {made, again}) {
    EXPECT_EQ(line->vertices().coordinates(), corners);
    EXPECT_EQ(line->property().attributes().comment(), QString(""));
  }
  EXPECT_EQ(source->name(), QString("source"));
}

TEST(Spheres, KeepCenterAndAnyRadius) {
  for (const double radius : {4.0, 0.0, -1.0, 1e300, std::numeric_limits<double>::infinity()}) {
    bool nameIsFree = false;
    const ztCAD_Sphere* sphere = crtSphere("S", coord(1, 2, 3), radius, nameIsFree);
    EXPECT_TRUE(nameIsFree);
    EXPECT_EQ(sphere->center().y(), 2);
    EXPECT_EQ(sphere->radius(), radius);
    EXPECT_FALSE(sphere->hasMIP());
  }
}

TEST(Solids, CopyTheirLists) {
  ztCAD_Vertices* vertices = tetrahedronVertices();
  ztCAD_Faces* faces = tetrahedronFaces();
  bool nameIsFree = false;
  const ztCAD_Triangle* solid = crtTriangle("S", vertices, faces, nameIsFree);
  const std::uint32_t nine = 9;
  addVertex(crtVertexByCoord(coord(9, 9, 9)), vertices);
  addFacet(crtFacet(&nine, &nine, &nine), faces);
  EXPECT_EQ(solid->vertices().coordinates(), corners);
  EXPECT_EQ(solid->faces().indices(), (Indices{0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3}));
  EXPECT_FALSE(solid->hasMIP());
}

TEST(Solids, IndicesAreNotCheckedAgainstTheVertices) {
  const std::uint32_t huge = 4294967295u;
  ztCAD_Faces* faces = crtFaces();
  addFacet(crtFacet(&huge, &huge, &huge), faces);
  bool nameIsFree = false;
  EXPECT_EQ(crtTriangle("S", crtVertices(), faces, nameIsFree)->faces().indices(),
            (Indices{huge, huge, huge}));
}

TEST(Solids, TemplateCopiesOnlyTheLists) {
  ztCAD_Triangle* source = make<ztCAD_Triangle>("source");
  source->setMip(*crtMIP(tenValues));
  source->property().attributes().setComment("c");
  bool nameIsFree = false;
  const ztCAD_TmplTriangle* made = crtTmplTriangle("made", source, nameIsFree);
  const ztCAD_TmplTriangle* again = crtTmplTriangle("again", made, nameIsFree);
  for (const ztCAD_TmplTriangle* solid : {made, again}) {
    EXPECT_EQ(solid->vertices().coordinates(), corners);
    EXPECT_EQ(solid->faces().indices().size(), 12u);
    EXPECT_EQ(solid->property().attributes().comment(), QString(""));
    EXPECT_FALSE(solid->hasMIP());
  }
}

// ------------------------------------------------------------------------------------------ mass and inertia

TEST(MassInertia, RecordKeepsItsValues) {
  for (const Reals& values : {Reals{}, Reals{1}, tenValues, Reals(11, 2.5)}) {
    EXPECT_EQ(crtMIP(values)->values(), values);
    EXPECT_EQ(crtMIP_nostl(values.empty() ? tenValues.data() : values.data(),
                           static_cast<std::int32_t>(values.size()))
                  ->values(),
              values);
  }
}

TEST(MassInertia, ElementAndTemplateKeepTheRecord) {
  const auto* element = make<ztCAD_ElementMIP>("M");
  const auto* tmpl = make<ztCAD_TmplElementMIP>("M");
  ASSERT_TRUE(element->record() && tmpl->record());
  EXPECT_EQ(element->record()->values(), tenValues);
  EXPECT_EQ(tmpl->record()->values(), tenValues);
  EXPECT_EQ(element->method().method(), QString("MIP"));
}

TEST(MassInertia, AnIncompleteRecordIsIgnoredAndTheElementNotSaved) {
  const Document document = newDocument();
  const Reals nine(9, 1.0);
  EXPECT_FALSE(crtMipElement("M", crtMIP(nine))->hasMIP());
  EXPECT_FALSE(addMipElementToDoc(crtMipElement("M", crtMIP(nine)), document.get()));
  EXPECT_FALSE(addTmplElementMipToDoc(crtTmplMipElement("M", crtMIP({})), document.get()));
  EXPECT_EQ(savedBytes(document.get()).find("MIP"), std::string::npos);
}

TEST(MassInertia, OfASphereIsReplacedOnlyByCompleteRecords) {
  auto* sphere = make<ztCAD_Sphere>("S");
  setMIP(crtMIP(Reals(9, 1.0)), sphere);
  EXPECT_FALSE(sphere->hasMIP());
  setMIP(crtMIP(tenValues), sphere);
  ASSERT_TRUE(sphere->hasMIP());
  setMIP(crtMIP(Reals(9, 1.0)), sphere);
  setMIP(crtMIP({}), sphere);
  ASSERT_TRUE(sphere->mip());
  EXPECT_EQ(sphere->mip()->values(), tenValues);
  setMIP(crtMIP(Reals(10, 2.0)), sphere);
  EXPECT_EQ(sphere->mip()->values(), Reals(10, 2.0));
}

// ------------------------------------------------------------------------------------ structures, references

TEST(Structures, KeepTheirCoordinateSystem) {
  const auto* placed = make<ztCAD_Structure>("S");
  ASSERT_TRUE(placed->property().lcs());
  EXPECT_EQ(placed->property().lcs()->values(), twelveValues);
  bool nameIsFree = false;
  const ztCAD_Structure* unplaced = crtStructure("S", crtLCS({}), nameIsFree);
  ASSERT_TRUE(unplaced->property().lcs());
  EXPECT_TRUE(unplaced->property().lcs()->values().empty());
  EXPECT_TRUE(unplaced->structures().empty());
}

TEST(Structures, TemplateCopiesTheContentAndSharesNestedStructures) {
  auto* source = make<ztCAD_Structure>("source");
  auto* nested = make<ztCAD_Structure>("nested");
  source->property().attributes().setComment("c");
  addStructureToStructure(nested, source);
  addPointToStructure(make<ztCAD_Point>("P"), source);
  bool nameIsFree = false;
  auto* made = crtTmplStructure("made", source, nameIsFree);
  EXPECT_EQ(made->name(), QString("made"));
  EXPECT_EQ(source->name(), QString("source"));
  EXPECT_EQ(made->property().attributes().comment(), QString("c"));
  ASSERT_TRUE(made->property().lcs());
  EXPECT_EQ(made->property().lcs()->values(), twelveValues);
  EXPECT_EQ(namesIn(&made->content().points), Names{"P"});
  ASSERT_EQ(made->structures().size(), 1u);
  EXPECT_EQ(made->structures().front(), nested);
  source->content().points.front().setName("changed");
  nested->setName("changed too");
  EXPECT_EQ(namesIn(&made->content().points), Names{"P"});
  EXPECT_EQ(made->structures().front()->name(), QString("changed too"));
}

template <typename Reference>
void expectReferenceToItsTemplate(const Reals& placement) {
  const auto* reference = make<Reference>("R");
  EXPECT_EQ(reference->archetype().templateName(), QString("T"));
  EXPECT_EQ(reference->archetype().file(), QString(""));
  EXPECT_FALSE(reference->lcs().isLocal());
  EXPECT_EQ(reference->lcs().values(), placement);
  EXPECT_FALSE(reference->property().lcs());
}

TEST(References, NameTheirTemplateAndArePlacedInTheModelSystem) {
  expectReferenceToItsTemplate<ztCAD_PointRef>(twelveValues);
  expectReferenceToItsTemplate<ztCAD_LineRef>(twelveValues);
  expectReferenceToItsTemplate<ztCAD_TriangleRef>(twelveValues);
  expectReferenceToItsTemplate<ztCAD_ElementMipRef>(twelveValues);
  expectReferenceToItsTemplate<ztCAD_StructureRef>(twelveValues);
}

TEST(References, ANewDetailReferenceHasTheDefaultPlacement) {
  expectReferenceToItsTemplate<ztCAD_DetailRef>({});
}

TEST(References, AreWrittenWithTheirPlacementAsMcs) {
  const Document document = newDocument();
  addPointRefToDoc(make<ztCAD_PointRef>("R"), document.get());
  addDetailRefToDoc(make<ztCAD_DetailRef>("D"), document.get());
  addTriangleRefToDoc(make<ztCAD_TriangleRef>("S"), document.get());
  const std::string bytes = savedBytes(document.get());
  const std::string system = "MCS=\"CS, 1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1\" ";
  const std::string rest = "color=\"\" comment=\"\" file=\"\" inform=\"\" ";
  EXPECT_NE(bytes.find("<pointRef " + system + rest + "name=\"R\" template=\"T\"/>"), std::string::npos)
      << bytes;
  EXPECT_NE(bytes.find("<solidRef " + system + rest + "name=\"S\" template=\"T\"/>"), std::string::npos)
      << bytes;
  EXPECT_NE(bytes.find("<detailRef MCS=\"\" " + rest + "name=\"D\" template=\"T\"/>"), std::string::npos)
      << bytes;
}

// ------------------------------------------------------------------------------------------------ properties

CommonProperty fullRecord() {
  CommonProperty record;
  record.comment = "Ёж";
  record.inform = "\xA8\xE6";
  record.color = ztCAD_Color(1, 2, 3);
  record.visible = ztCAD_Visible(false);
  record.lcs = ztCAD_LCS(true, Reals(12, 5.0));
  return record;
}

template <typename Element>
void expectPropertiesAreReplaced() {
  auto* element = make<Element>("A");
  setCommonProperty(fullRecord(), element);
  const ztCAD_cmnProperty& block = element->property();
  EXPECT_EQ(element->name(), QString("A"));
  EXPECT_EQ(block.attributes().comment(), QString("Ёж"));
  EXPECT_EQ(block.attributes().inform(), QString("Ёж"));
  EXPECT_EQ(block.showable().color().blue(), 3u);
  EXPECT_EQ(block.showable().visible().value(), false);
  ASSERT_TRUE(block.lcs());
  EXPECT_EQ(block.lcs()->values(), Reals(12, 5.0));

  setCommonProperty(CommonProperty(), element);
  EXPECT_EQ(element->name(), QString("A"));
  EXPECT_EQ(block.attributes().comment(), QString(""));
  EXPECT_EQ(block.attributes().inform(), QString(""));
  EXPECT_FALSE(block.showable().color().isSet());
  EXPECT_FALSE(block.showable().visible().isSet());
  ASSERT_TRUE(block.lcs()) << "a record without a coordinate system keeps the present one";
  EXPECT_EQ(block.lcs()->values(), Reals(12, 5.0));
}

TEST(Properties, OfEachKindAreReplacedExceptForTheName) {
  expectPropertiesAreReplaced<ztCAD_Point>();
  expectPropertiesAreReplaced<ztCAD_Line>();
  expectPropertiesAreReplaced<ztCAD_Sphere>();
  expectPropertiesAreReplaced<ztCAD_Structure>();
  expectPropertiesAreReplaced<ztCAD_TmplStructure>();
  expectPropertiesAreReplaced<ztCAD_Triangle>();
}

TEST(Properties, OfMassInertiaElementsKeepColourAndVisibility) {
  auto* element = make<ztCAD_ElementMIP>("M");
  element->property().showable().setColor(ztCAD_Color(1, 2, 3));
  element->property().showable().setVisible(ztCAD_Visible(true));
  CommonPropertyForMIP record;
  record.comment = "c";
  record.inform = "i";
  record.lcs = ztCAD_LCS(true, twelveValues);
  setCommonProperty(record, element);
  const ztCAD_cmnProperty& block = element->property();
  EXPECT_EQ(element->name(), QString("M"));
  EXPECT_EQ(block.attributes().comment(), QString("c"));
  EXPECT_EQ(block.attributes().inform(), QString("i"));
  ASSERT_TRUE(block.lcs());
  EXPECT_EQ(block.lcs()->values(), twelveValues);
  setCommonProperty(CommonPropertyForMIP(), element);
  EXPECT_EQ(block.attributes().comment(), QString(""));
  EXPECT_TRUE(block.lcs());
  EXPECT_EQ(block.showable().color().blue(), 3u);
  EXPECT_EQ(block.showable().visible().value(), true);
  EXPECT_EQ(element->record()->values(), tenValues);
}

TEST(CoordinateSystems, CanBeCreatedFromAnArray) {
  const ztCAD_LCS* fromArray = crtLCS_nostl(twelveValues.data());
  EXPECT_EQ(fromArray->values(), crtLCS(twelveValues)->values());
  EXPECT_TRUE(fromArray->isLocal());
}

}  // namespace
