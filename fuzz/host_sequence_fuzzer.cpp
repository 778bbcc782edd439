// A host that calls the exported functions in arbitrary order: each byte selects a call or an argument.
// Everything that the interface permits may occur: null in place of an object, the same object twice, a
// document that was deleted. No call takes two choices among its arguments, because their order of evaluation
// is unspecified.

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

#include "api/created_objects.h"
#include "documents.h"
#include "fuzzing.h"
#include "structure/read_structures.h"
#include "ztCAD.h"

namespace {

using fuzzing::Choices;
using fuzzing::require;

// Limit for the structures reached from one structure, counted once per path: a shared structure is written
// once per path.
constexpr std::size_t enough = 60;

/// Number of structures reached from this one, itself included, counted once per path; stops counting at
/// `enough`.
std::size_t countFrom(const ztCAD_commonStructure& structure) {
  std::size_t count = 1;
  for (const ztCAD_commonStructure* nested : structure.structures()) {
    if (count >= enough) break;
    count += countFrom(*nested);
  }
  return count;
}

/// Whether each structure below this one is reached by one path only. `visited` collects the structures
/// reached.
bool isTree(const ztCAD_commonStructure& structure, std::set<const ztCAD_commonStructure*>& visited) {
  const auto& nested = structure.structures();
  return visited.insert(&structure).second &&
         std::all_of(nested.begin(), nested.end(),
                     [&visited](const auto* inner) { return isTree(*inner, visited); });
}

class Host {
 public:
  explicit Host(std::string_view bytes) : m_choices(bytes) {}
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  ~Host() {
    for (ztCAD_GMDDocument* document : all<ztCAD_GMDDocument>())
      DeleteGMDDoc(document);
    ztcad::clearReadStructures();
    ztcad::releaseCreatedObjects();  // otherwise the process would keep the objects of every input
  }

  void run() {
    for (int calls = 0; m_choices.hasMore() && calls < 200; ++calls)
      call();
    for (ztCAD_GMDDocument* document : all<ztCAD_GMDDocument>())
      checkRoundTrip(document);
  }

 private:
  template <typename Class>
  using Pool = std::vector<Class*>;

  template <typename Class>
  Pool<Class>& all() {
    return std::get<Pool<Class>>(m_pools);
  }

  /// An object of the class that the host holds, or null.
  template <typename Class>
  Class* any() {
    auto& pool = all<Class>();
    return pool.empty() || m_choices.oneIn(16) ? nullptr : pool[m_choices.below(pool.size())];
  }

  template <typename Class>
  Class* keep(Class* made) {
    if (made) all<Class>().push_back(made);
    return made;
  }

  std::string name() { return m_choices.oneIn(2) ? std::string(1, 'A') : m_choices.text(12); }

  ztCAD_commonStructure* anyStructure() {
    if (m_choices.oneIn(3)) return any<ztCAD_TmplStructure>();
    return any<ztCAD_Structure>();
  }

  // ---------------------------------------------------------------------------------------------- creating

  void createRecord() {
    const double at[] = {m_choices.real(), m_choices.real(), m_choices.real()};
    const std::uint32_t of[] = {static_cast<std::uint32_t>(m_choices.below(5)), 1, 4294967295U};
    const std::vector<double> values(m_choices.below(14), at[0]);
    switch (m_choices.below(9)) {
      case 0:
        keep(crtCoord(m_choices.oneIn(9) ? nullptr : &at[0], &at[1], &at[2]));
        break;
      case 1:
        keep(crtVertex(&at[0], &at[1], &at[2]));
        break;
      case 2:
        keep(crtVertexByCoord(any<ztCAD_Coord>()));
        break;
      case 3:
        keep(crtVertexByPoint(any<ztCAD_Point>()));
        break;
      case 4:
        keep(crtFacet(&of[0], &of[1], &of[2]));
        break;
      case 5:
        keep(crtLCS(values));
        break;
      case 6:
        keep(crtMIP(values));
        break;
      case 7:
        keep(crtVertices());
        break;
      default:
        keep(crtFaces());
        break;
    }
  }

  void fillList() {
    const std::list<ztCAD_Vertex*> vertices{any<ztCAD_Vertex>(), any<ztCAD_Vertex>()};
    const std::list<ztCAD_Facet*> facets{any<ztCAD_Facet>(), any<ztCAD_Facet>()};
    auto* const vertexList = any<ztCAD_Vertices>();
    auto* const faces = any<ztCAD_Faces>();
    switch (m_choices.below(4)) {
      case 0:
        addVertex(vertices.front(), vertexList);
        break;
      case 1:
        addVertexN(vertices, vertexList);
        break;
      case 2:
        addFacet(facets.front(), faces);
        break;
      default:
        addFacetN(facets, faces);
        break;
    }
  }

  void createElement() {
    bool isFree = false;
    const std::string named = name();
    const char* const text = named.c_str();
    const auto* const vertices = any<ztCAD_Vertices>();
    const auto* const faces = any<ztCAD_Faces>();
    const double radius = m_choices.real();
    switch (m_choices.below(7)) {
      case 0:
        keep(crtPoint(named, any<ztCAD_Coord>(), isFree));
        break;
      case 1:
        keep(crtPolyline(text, vertices, isFree));
        break;
      case 2:
        keep(crtSphere(named, any<ztCAD_Coord>(), radius, isFree));
        break;
      case 3:
        keep(crtTriangle(named, vertices, faces, isFree));
        break;
      case 4:
        keep(crtMipElement(named, any<ztCAD_MIP>()));
        break;
      case 5:
        keep(crtTriangle_nostl(text, vertices, faces, isFree));
        break;
      default:
        keep(crtStructure(named, any<ztCAD_LCS>(), isFree));
        break;
    }
  }

  void createTemplate() {
    bool isFree = false;
    const std::string named = name();
    switch (m_choices.below(5)) {
      case 0:
        keep(crtTmplPoint(named, any<ztCAD_Point>(), isFree));
        break;
      case 1:
        keep(crtTmplLine(named, any<ztCAD_Line>(), isFree));
        break;
      case 2:
        keep(crtTmplTriangle(named, any<ztCAD_Triangle>(), isFree));
        break;
      case 3:
        keep(crtTmplMipElement(named, any<ztCAD_MIP>()));
        break;
      default:
        keep(crtTmplStructure(named, anyStructure(), isFree));
        break;
    }
  }

  void createReference() {
    bool isFree = false;
    const std::string named = name();
    const auto* const lcs = any<ztCAD_LCS>();
    switch (m_choices.below(6)) {
      case 0:
        keep(crtPointRef(named, lcs, any<ztCAD_TmplPoint>(), isFree));
        break;
      case 1:
        keep(crtLineRef(named, lcs, any<ztCAD_TmplLine>(), isFree));
        break;
      case 2:
        keep(crtTriangleRef(named, lcs, any<ztCAD_TmplTriangle>(), isFree));
        break;
      case 3:
        keep(crtElementMipRef(named, lcs, any<ztCAD_TmplElementMIP>(), isFree));
        break;
      case 4:
        keep(crtStructureRef(named, lcs, any<ztCAD_TmplStructure>(), isFree));
        break;
      default:
        keep(crtDetailRef(named, lcs, nullptr, isFree));
        break;  // no function creates a template detail
    }
  }

  void describe() {
    CommonProperty record;
    const auto* const mip = any<ztCAD_MIP>();
    record.comment = m_choices.text();
    record.color = ztCAD_Color(255, 300, 4294967295U);
    if (m_choices.oneIn(2)) record.visible = ztCAD_Visible(m_choices.oneIn(2));
    if (const ztCAD_LCS* const lcs = any<ztCAD_LCS>()) record.lcs = *lcs;
    switch (m_choices.below(5)) {
      case 0:
        setCommonProperty(record, any<ztCAD_Point>());
        break;
      case 1:
        setCommonProperty(record, any<ztCAD_Line>());
        break;
      case 2:
        setCommonProperty(record, any<ztCAD_Structure>());
        break;
      case 3:
        setCommonProperty(record, any<ztCAD_TmplStructure>());
        break;
      default:
        setMIP(mip, any<ztCAD_Sphere>());
        break;
    }
  }

  // ----------------------------------------------------------------------------------- insertion and removal

  /// Adds an element and checks the result against the container.
  template <typename Element, typename Container>
  void add(bool (*function)(const Element*, ztCAD_GMDDocument*),
           ztCAD_Cont<Container>* (*get)(ztCAD_GMDDocument*)) {
    auto* const document = any<ztCAD_GMDDocument>();
    const Element* const element = any<Element>();
    const std::size_t before = document ? get(document)->size() : 0;
    const bool refused = function(element, document);
    require(refused == (!element || !document), "adding fails only for a null argument");
    if (document)
      require(get(document)->size() == before + (refused ? 0 : 1), "adding grows the container by one");
  }

  void addToDocument() {
    switch (m_choices.below(6)) {
      case 0:
        add<ztCAD_Point>(addPointToDoc, ztCAD_getPoints);
        break;
      case 1:
        add<ztCAD_Line>(addPolylineToDoc, ztCAD_getLines);
        break;
      case 2:
        add<ztCAD_Sphere>(addSphereToDoc, ztCAD_getSpheres);
        break;
      case 3:
        add<ztCAD_Triangle>(addTriangleToDoc, ztCAD_getTriangles);
        break;
      case 4:
        add<ztCAD_ElementMIP>(addMipElementToDoc, ztCAD_getMipElements);
        break;
      default:
        add<ztCAD_Structure>(addStructureToDoc, ztCAD_getStructures);
        break;
    }
  }

  void addTemplateOrReferenceToDocument() {
    switch (m_choices.below(11)) {
      case 0:
        add<ztCAD_TmplPoint>(addTmplPointToDoc, ztCAD_getTmplPoints);
        break;
      case 1:
        add<ztCAD_PointRef>(addPointRefToDoc, ztCAD_getPointsRef);
        break;
      case 2:
        add<ztCAD_TmplLine>(addTmplLineToDoc, ztCAD_getTmplLines);
        break;
      case 3:
        add<ztCAD_LineRef>(addLineRefToDoc, ztCAD_getLinesRef);
        break;
      case 4:
        add<ztCAD_TmplTriangle>(addTmplTriangleToDoc, ztCAD_getTmplTriangles);
        break;
      case 5:
        add<ztCAD_TriangleRef>(addTriangleRefToDoc, ztCAD_getTrianglesRef);
        break;
      case 6:
        add<ztCAD_TmplElementMIP>(addTmplElementMipToDoc, ztCAD_getTmplElementMips);
        break;
      case 7:
        add<ztCAD_ElementMipRef>(addElementMipRefToDoc, ztCAD_getElementMipsRef);
        break;
      case 8:
        add<ztCAD_TmplStructure>(addTmplStructureToDoc, ztCAD_getTmplStructures);
        break;
      case 9:
        add<ztCAD_StructureRef>(addStructureRefToDoc, ztCAD_getStructuresRef);
        break;
      default:
        add<ztCAD_DetailRef>(addDetailRefToDoc, ztCAD_getDetailsRef);
        break;
    }
  }

  void addToStructure() {
    ztCAD_commonStructure* const structure = anyStructure();
    switch (m_choices.below(12)) {
      case 0:
        addPointToStructure(any<ztCAD_Point>(), structure);
        break;
      case 1:
        addPolylineToStructure(any<ztCAD_Line>(), structure);
        break;
      case 2:
        addSphereToStructure(any<ztCAD_Sphere>(), structure);
        break;
      case 3:
        addTriangleToStructure(any<ztCAD_Triangle>(), structure);
        break;
      case 4:
        addMipElementToStructure(any<ztCAD_ElementMIP>(), structure);
        break;
      case 5:
        addPointRefToStructure(any<ztCAD_PointRef>(), structure);
        break;
      case 6:
        addLineRefToStructure(any<ztCAD_LineRef>(), structure);
        break;
      case 7:
        addTriangleRefToStructure(any<ztCAD_TriangleRef>(), structure);
        break;
      case 8:
        addElementMipRefToStructure(any<ztCAD_ElementMipRef>(), structure);
        break;
      case 9:
        addStructureRefToStructure(any<ztCAD_StructureRef>(), structure);
        break;
      case 10:
        addDetailRefToStructure(any<ztCAD_DetailRef>(), structure);
        break;
      default:
        nest(structure);
        break;
    }
  }

  void nest(ztCAD_commonStructure* outer) {
    ztCAD_commonStructure* const inner = anyStructure();
    if (inner && outer && (countFrom(*inner) >= enough || countFrom(*outer) >= enough)) return;
    require(addStructureToStructure(inner, outer) || inner != outer, "a structure is not added to itself");
  }

  template <typename Element>
  void remove(bool (*function)(const Element*, ztCAD_GMDDocument*),
              ztCAD_Cont<Element>* (*get)(ztCAD_GMDDocument*)) {
    auto* const document = any<ztCAD_GMDDocument>();
    if (!document || get(document)->empty()) {
      require(!function(any<Element>(), document), "an absent element is not removed");
      return;
    }
    const std::size_t before = get(document)->size();
    require(function(&get(document)->front(), document), "a contained element is removed");
    require(get(document)->size() == before - 1, "removing shrinks the container by one");
  }

  void removeFromDocument() {
    switch (m_choices.below(7)) {
      case 0:
        remove<ztCAD_Point>(removePointFromDoc, ztCAD_getPoints);
        break;
      case 1:
        remove<ztCAD_Line>(removePolylineFromDoc, ztCAD_getLines);
        break;
      case 2:
        remove<ztCAD_Triangle>(removeTriangleFromDoc, ztCAD_getTriangles);
        break;
      case 3:
        remove<ztCAD_TriangleRef>(removeRefTriangleFromDoc, ztCAD_getTrianglesRef);
        break;
      case 4:
        remove<ztCAD_LineRef>(removeLineRefFromDoc, ztCAD_getLinesRef);
        break;
      case 5:
        remove<ztCAD_ElementMIP>(removeMIPFromDoc, ztCAD_getMipElements);
        break;
      default:
        remove<ztCAD_Structure>(removeStructureFromDoc, ztCAD_getStructures);
        break;
    }
  }

  // ---------------------------------------------------------------------------------------------- documents

  void createDocument() {
    constexpr std::size_t maxDocuments = 4;
    if (all<ztCAD_GMDDocument>().size() == maxDocuments) return deleteDocument();
    bool parsed = false;
    std::string message;
    int line = 0;
    int column = 0;
    if (m_choices.oneIn(2))
      keep(crtGMDDocument(m_choices.text()));
    else
      keep(crtGMDDocumentFromStdString(nestedText(), parsed, message, line, column));
  }

  std::string nestedText() {
    return "<GMD><structure name='" + std::string(m_choices.oneIn(2) ? "A" : "B") +
           "' LCS=''><structure name='A'><structure name='A'/><point name='p' center='1'/></structure></structure>"
           "<template_structure name='A'><structure name='A'/></template_structure></GMD>";
  }

  void deleteDocument() {
    auto& documents = all<ztCAD_GMDDocument>();
    auto* const document = any<ztCAD_GMDDocument>();
    DeleteGMDDoc(document);
    if (document) m_deleted.push_back(document);
    documents.erase(std::remove(documents.begin(), documents.end(), document), documents.end());
  }

  void deleteAgain() {
    if (m_deleted.empty()) return;
    ztCAD_GMDDocument* const deleted = m_deleted[m_choices.below(m_deleted.size())];
    const auto& documents = all<ztCAD_GMDDocument>();
    // a newer document may have the same address
    if (std::find(documents.begin(), documents.end(), deleted) == documents.end()) DeleteGMDDoc(deleted);
  }

  void updateOrClear() {
    std::int32_t code = -1;
    bool fault = true;
    if (m_choices.oneIn(3)) return ClearGMDDoc();
    const std::string file = fuzzing::fileWith(nestedText());
    UpdateGMDDoc(any<ztCAD_GMDDocument>(), file, code, fault);
    require(code == 0 || code == 110, "an update succeeds or reports that there is no document");
  }

  void inspect() {
    auto* const document = any<ztCAD_GMDDocument>();
    if (!isSmall(document)) return;
    std::string text = "earlier";
    GMDDocumentToString(document, text, m_choices.oneIn(2));
    require(text.empty() == !document, "a document has a text, null has none");
    const bool passes = checkGMDDocument(document);
    require(checkGMDDocument(document) == passes, "a repeated check returns the same result");
  }

  void save() {
    auto* const document = any<ztCAD_GMDDocument>();
    if (document && isSmall(document)) fuzzing::saved(document);
  }

  /// Whether the document's text is short enough for a fuzzer.
  static bool isSmall(ztCAD_GMDDocument* document) {
    if (!document) return true;
    std::size_t count = 0;
    for (const ztCAD_Structure& structure : *ztCAD_getStructures(document))
      count += countFrom(structure);
    for (const ztCAD_TmplStructure& structure : *ztCAD_getTmplStructures(document))
      count += countFrom(structure);
    return count < 5 * enough;
  }

  /// Checks the round trip of a document without shared structures: a structure held twice has one name, but
  /// becomes two structures when read back.
  static void checkRoundTrip(ztCAD_GMDDocument* document) {
    if (!isSmall(document)) return;
    std::set<const ztCAD_commonStructure*> visited;
    bool isTreeOnly = true;
    for (const ztCAD_Structure& structure : *ztCAD_getStructures(document))
      isTreeOnly = isTreeOnly && isTree(structure, visited);
    for (const ztCAD_TmplStructure& structure : *ztCAD_getTmplStructures(document))
      isTreeOnly = isTreeOnly && isTree(structure, visited);
    if (isTreeOnly) fuzzing::requireRoundTrip(document);
  }

  void call() {
    using Call = void (Host::*)();
    static constexpr Call calls[] = {&Host::createRecord,
                                     &Host::fillList,
                                     &Host::createElement,
                                     &Host::createTemplate,
                                     &Host::createReference,
                                     &Host::describe,
                                     &Host::addTemplateOrReferenceToDocument,
                                     &Host::addToDocument,
                                     &Host::addToStructure,
                                     &Host::addToStructure,
                                     &Host::removeFromDocument,
                                     &Host::createDocument,
                                     &Host::deleteDocument,
                                     &Host::deleteAgain,
                                     &Host::updateOrClear,
                                     &Host::inspect,
                                     &Host::save};
    (this->*calls[m_choices.below(std::size(calls))])();
  }

  Choices m_choices;
  std::tuple<Pool<ztCAD_GMDDocument>, Pool<ztCAD_Coord>, Pool<ztCAD_Vertex>, Pool<ztCAD_Vertices>,
             Pool<ztCAD_Facet>, Pool<ztCAD_Faces>, Pool<ztCAD_LCS>, Pool<ztCAD_MIP>, Pool<ztCAD_Point>,
             Pool<ztCAD_TmplPoint>, Pool<ztCAD_PointRef>, Pool<ztCAD_Line>, Pool<ztCAD_TmplLine>,
             Pool<ztCAD_LineRef>, Pool<ztCAD_Sphere>, Pool<ztCAD_Triangle>, Pool<ztCAD_TmplTriangle>,
             Pool<ztCAD_TriangleRef>, Pool<ztCAD_ElementMIP>, Pool<ztCAD_TmplElementMIP>,
             Pool<ztCAD_ElementMipRef>, Pool<ztCAD_Structure>, Pool<ztCAD_TmplStructure>,
             Pool<ztCAD_StructureRef>, Pool<ztCAD_DetailRef>>
      m_pools;
  std::vector<ztCAD_GMDDocument*> m_deleted;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Host(fuzzing::bytesOf(data, size)).run();
  return 0;
}
