#include "trial.h"

namespace exhaustion {

namespace {

ztCAD_GMDDocument* document() {
  ztCAD_GMDDocument* const made = crtGMDDocument(longText());
  addPointToDoc(pointNamed("first"), made);
  return made;
}

ztCAD_commonStructure* structure() {
  ztCAD_Structure* const made = make<ztCAD_Structure>("S");
  addPointToStructure(pointNamed("first"), made);
  return made;
}

/// A structure with two levels of others in it, and with names that occur twice.
ztCAD_commonStructure* nestedStructures() {
  ztCAD_commonStructure* const outer = structure();
  ztCAD_commonStructure* const middle = structure();
  addStructureToStructure(structure(), middle);
  addStructureToStructure(middle, outer);
  addStructureToStructure(structure(), outer);
  addPointToStructure(pointNamed("first"), outer);
  return outer;
}

ztCAD_cmnDetail* detail() {
  auto* const made = new ztCAD_Detail;
  ztCAD_addToDetail(pointNamed("first"), made);
  return made;
}

template <typename Element>
Trial addsToDocument(bool (*add)(const Element*, ztCAD_GMDDocument*)) {
  return adds(add, static_cast<const Element*>(make<Element>(longText())), document());
}

template <typename Element>
Trial addsToStructure(bool (*add)(const Element*, ztCAD_commonStructure*)) {
  return adds(add, static_cast<const Element*>(make<Element>(longText())), structure());
}

/// A function that removes an element and returns whether it did.
template <typename Holder, typename Remove>
Trial removes(Holder* holder, Remove remove) {
  return {[=] { return remove(holder) ? Report::Success : Report::Failure; }, [=] { return print(holder); }};
}

template <typename Element>
Trial removesFromDocument(bool (*remove)(const Element*, ztCAD_GMDDocument*),
                          ztCAD_Cont<Element>* (*get)(ztCAD_GMDDocument*)) {
  ztCAD_GMDDocument* const holder = fullDocument();
  const Element* const first = &get(holder)->front();
  return removes(holder, [=](ztCAD_GMDDocument* from) { return remove(first, from); });
}

template <typename Element>
Trial gets(ztCAD_Cont<Element>* (*get)(ztCAD_GMDDocument*)) {
  return points([=, holder = document()] { return get(holder); });
}

template <typename Holder>
Trial appends(ztCAD_Base* (*append)(Holder*, std::int32_t), Holder* holder, std::int32_t kind) {
  return {[=] { return append(holder, kind) ? Report::Success : Report::Failure; },
          [=] { return print(holder); }};
}

template <typename Holder>
Trial lists(std::int32_t (*list)(Holder*, std::int32_t, ztCAD_Base**, std::int32_t), Holder* holder) {
  return answers([=] {
    ztCAD_Base* elements[2] = {};
    return list(holder, ztCAD_ElementPoint, elements, 2);
  });
}

const Row additions[] = {
    {"addPointToDoc", "", [] { return addsToDocument(addPointToDoc); }},
    {"addTmplPointToDoc", "", [] { return addsToDocument(addTmplPointToDoc); }},
    {"addPointRefToDoc", "", [] { return addsToDocument(addPointRefToDoc); }},
    {"addPolylineToDoc", "", [] { return addsToDocument(addPolylineToDoc); }},
    {"addTmplLineToDoc", "", [] { return addsToDocument(addTmplLineToDoc); }},
    {"addLineRefToDoc", "", [] { return addsToDocument(addLineRefToDoc); }},
    {"addSphereToDoc", "", [] { return addsToDocument(addSphereToDoc); }},
    {"addTriangleToDoc", "", [] { return addsToDocument(addTriangleToDoc); }},
    {"addTmplTriangleToDoc", "", [] { return addsToDocument(addTmplTriangleToDoc); }},
    {"addTriangleRefToDoc", "", [] { return addsToDocument(addTriangleRefToDoc); }},
    {"addMipElementToDoc", "", [] { return addsToDocument(addMipElementToDoc); }},
    {"addTmplElementMipToDoc", "", [] { return addsToDocument(addTmplElementMipToDoc); }},
    {"addElementMipRefToDoc", "", [] { return addsToDocument(addElementMipRefToDoc); }},
    {"addStructureToDoc", "", [] { return addsToDocument(addStructureToDoc); }},
    {"addTmplStructureToDoc", "", [] { return addsToDocument(addTmplStructureToDoc); }},
    {"addStructureRefToDoc", "", [] { return addsToDocument(addStructureRefToDoc); }},
    {"addDetailRefToDoc", "", [] { return addsToDocument(addDetailRefToDoc); }},
    {"addPointToStructure", "", [] { return addsToStructure(addPointToStructure); }},
    {"addPolylineToStructure", "", [] { return addsToStructure(addPolylineToStructure); }},
    {"addSphereToStructure", "", [] { return addsToStructure(addSphereToStructure); }},
    {"addTriangleToStructure", "", [] { return addsToStructure(addTriangleToStructure); }},
    {"addMipElementToStructure", "", [] { return addsToStructure(addMipElementToStructure); }},
    {"addPointRefToStructure", "", [] { return addsToStructure(addPointRefToStructure); }},
    {"addLineRefToStructure", "", [] { return addsToStructure(addLineRefToStructure); }},
    {"addTriangleRefToStructure", "", [] { return addsToStructure(addTriangleRefToStructure); }},
    {"addElementMipRefToStructure", "", [] { return addsToStructure(addElementMipRefToStructure); }},
    {"addStructureRefToStructure", "", [] { return addsToStructure(addStructureRefToStructure); }},
    {"addDetailRefToStructure", "", [] { return addsToStructure(addDetailRefToStructure); }},
    {"addStructureToStructure", "",
     [] {
       return adds(addStructureToStructure, static_cast<const ztCAD_commonStructure*>(nestedStructures()),
                   structure());
     }},
};

const Row removals[] = {
    {"removePointFromDoc", "", [] { return removesFromDocument(removePointFromDoc, ztCAD_getPoints); }},
    {"removePolylineFromDoc", "", [] { return removesFromDocument(removePolylineFromDoc, ztCAD_getLines); }},
    {"removeTriangleFromDoc", "",
     [] { return removesFromDocument(removeTriangleFromDoc, ztCAD_getTriangles); }},
    {"removeRefTriangleFromDoc", "",
     [] { return removesFromDocument(removeRefTriangleFromDoc, ztCAD_getTrianglesRef); }},
    {"removeLineRefFromDoc", "", [] { return removesFromDocument(removeLineRefFromDoc, ztCAD_getLinesRef); }},
    {"removeMIPFromDoc", "", [] { return removesFromDocument(removeMIPFromDoc, ztCAD_getMipElements); }},
    {"removeStructureFromDoc", "",
     [] { return removesFromDocument(removeStructureFromDoc, ztCAD_getStructures); }},
};

const Row containers[] = {
    {"ztCAD_getStructures", "", [] { return gets(ztCAD_getStructures); }},
    {"ztCAD_getStructuresRef", "", [] { return gets(ztCAD_getStructuresRef); }},
    {"ztCAD_getTmplStructures", "", [] { return gets(ztCAD_getTmplStructures); }},
    {"ztCAD_getPoints", "", [] { return gets(ztCAD_getPoints); }},
    {"ztCAD_getLines", "", [] { return gets(ztCAD_getLines); }},
    {"ztCAD_getSpheres", "", [] { return gets(ztCAD_getSpheres); }},
    {"ztCAD_getTriangles", "", [] { return gets(ztCAD_getTriangles); }},
    {"ztCAD_getMipElements", "", [] { return gets(ztCAD_getMipElements); }},
    {"ztCAD_getDetails", "", [] { return gets(ztCAD_getDetails); }},
    {"ztCAD_getDetailsRef", "", [] { return gets(ztCAD_getDetailsRef); }},
    {"ztCAD_getTmplDetails", "", [] { return gets(ztCAD_getTmplDetails); }},
    {"ztCAD_getTmplPoints", "", [] { return gets(ztCAD_getTmplPoints); }},
    {"ztCAD_getPointsRef", "", [] { return gets(ztCAD_getPointsRef); }},
    {"ztCAD_getTmplLines", "", [] { return gets(ztCAD_getTmplLines); }},
    {"ztCAD_getLinesRef", "", [] { return gets(ztCAD_getLinesRef); }},
    {"ztCAD_getTmplElementMips", "", [] { return gets(ztCAD_getTmplElementMips); }},
    {"ztCAD_getElementMipsRef", "", [] { return gets(ztCAD_getElementMipsRef); }},
    {"ztCAD_getTmplTriangles", "", [] { return gets(ztCAD_getTmplTriangles); }},
    {"ztCAD_getTrianglesRef", "", [] { return gets(ztCAD_getTrianglesRef); }},
};

const Row byIndex[] = {
    {"ztCAD_countInDoc", "",
     [] { return answers([holder = document()] { return ztCAD_countInDoc(holder, ztCAD_ElementPoint); }); }},
    {"ztCAD_countInStructure", "",
     [] {
       return answers([holder = structure()] { return ztCAD_countInStructure(holder, ztCAD_ElementPoint); });
     }},
    {"ztCAD_countInDetail", "",
     [] { return answers([holder = detail()] { return ztCAD_countInDetail(holder, ztCAD_ElementPoint); }); }},
    {"ztCAD_getFromDoc", "",
     [] {
       return points([holder = document()] { return ztCAD_getFromDoc(holder, ztCAD_ElementPoint, 0); });
     }},
    {"ztCAD_getFromStructure", "",
     [] {
       return points(
           [holder = structure()] { return ztCAD_getFromStructure(holder, ztCAD_ElementPoint, 0); });
     }},
    {"ztCAD_getFromDetail", "",
     [] {
       return points([holder = detail()] { return ztCAD_getFromDetail(holder, ztCAD_ElementPoint, 0); });
     }},
    {"ztCAD_listDoc", "", [] { return lists(ztCAD_listDoc, document()); }},
    {"ztCAD_listStructure", "", [] { return lists(ztCAD_listStructure, structure()); }},
    {"ztCAD_listDetail", "", [] { return lists(ztCAD_listDetail, detail()); }},
};

const Row ofAnyKind[] = {
    {"ztCAD_addToDoc", "a solid",
     [] {
       const ztCAD_Base* const solid = make<ztCAD_Triangle>("T");
       return adds(ztCAD_addToDoc, solid, document());
     }},
    {"ztCAD_addToDoc", "a structure with others",
     [] {
       const ztCAD_Base* const nested = nestedStructures();
       return adds(ztCAD_addToDoc, nested, document());
     }},
    {"ztCAD_addToStructure", "",
     [] {
       const ztCAD_Base* const point = pointNamed(longText());
       return adds(ztCAD_addToStructure, point, structure());
     }},
    {"ztCAD_addToDetail", "",
     [] {
       const ztCAD_Base* const point = pointNamed(longText());
       return adds(ztCAD_addToDetail, point, detail());
     }},
    {"ztCAD_appendToDoc", "a detail",
     [] { return appends(ztCAD_appendToDoc, document(), ztCAD_ElementDetail); }},
    {"ztCAD_appendToDoc", "a structure",
     [] { return appends(ztCAD_appendToDoc, document(), ztCAD_ElementStructure); }},
    {"ztCAD_appendToStructure", "a point",
     [] { return appends(ztCAD_appendToStructure, structure(), ztCAD_ElementPoint); }},
    {"ztCAD_appendToStructure", "a structure",
     [] { return appends(ztCAD_appendToStructure, structure(), ztCAD_ElementStructure); }},
    {"ztCAD_appendToDetail", "", [] { return appends(ztCAD_appendToDetail, detail(), ztCAD_ElementPoint); }},
    {"ztCAD_removeFromDoc", "",
     [] {
       ztCAD_GMDDocument* const holder = document();
       const ztCAD_Base* const element = ztCAD_getFromDoc(holder, ztCAD_ElementPoint, 0);
       return removes(holder, [=](ztCAD_GMDDocument* from) {
         return ztCAD_removeFromDoc(element, from, ztCAD_ElementPoint);
       });
     }},
    {"ztCAD_removeFromStructure", "",
     [] {
       ztCAD_commonStructure* const holder = nestedStructures();
       const ztCAD_Base* const element = ztCAD_getFromStructure(holder, ztCAD_ElementStructure, 0);
       return removes(holder, [=](ztCAD_commonStructure* from) {
         return ztCAD_removeFromStructure(element, from, ztCAD_ElementStructure);
       });
     }},
    {"ztCAD_removeFromDetail", "",
     [] {
       ztCAD_cmnDetail* const holder = detail();
       const ztCAD_Base* const element = ztCAD_getFromDetail(holder, ztCAD_ElementPoint, 0);
       return removes(holder, [=](ztCAD_cmnDetail* from) {
         return ztCAD_removeFromDetail(element, from, ztCAD_ElementPoint);
       });
     }},
    {"ztCAD_cloneStructure", "",
     [] { return creates([source = nestedStructures()] { return ztCAD_cloneStructure(source); }); }},
    {"ztCAD_unifyNames", "", [] { return changes(nestedStructures(), ztCAD_unifyNames); }},
};

}  // namespace

std::vector<Row> contentRows() {
  std::vector<Row> rows(std::begin(additions), std::end(additions));
  rows.insert(rows.end(), std::begin(removals), std::end(removals));
  rows.insert(rows.end(), std::begin(containers), std::end(containers));
  rows.insert(rows.end(), std::begin(byIndex), std::end(byIndex));
  rows.insert(rows.end(), std::begin(ofAnyKind), std::end(ofAnyKind));
  return rows;
}

}  // namespace exhaustion
