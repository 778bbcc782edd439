#include "demo.h"

#include <array>
#include <vector>

namespace demo {

namespace {

ztCAD_LCS* placedAt(const Position& at) { return crtLCS({at.x, at.y, at.z, 1, 0, 0, 0, 1, 0, 0, 0, 1}); }

/// A box between two opposite corners, as a solid of twelve facets; lengths in metres.
ztCAD_Triangle* box(const std::string& name, const Position& low, const Position& high) {
  ztCAD_Vertices* const vertices = crtVertices();
  for (const double z : {low.z, high.z}) {
    for (const Position& corner : {Position{low.x, low.y, z}, Position{high.x, low.y, z},
                                   Position{high.x, high.y, z}, Position{low.x, high.y, z}})
      addVertex(crtVertex(&corner.x, &corner.y, &corner.z), vertices);
  }
  constexpr std::array<std::array<std::uint32_t, 3>, 12> facets = {{{0, 2, 1},
                                                                    {0, 3, 2},
                                                                    {4, 5, 6},
                                                                    {4, 6, 7},
                                                                    {0, 1, 5},
                                                                    {0, 5, 4},
                                                                    {1, 2, 6},
                                                                    {1, 6, 5},
                                                                    {2, 3, 7},
                                                                    {2, 7, 6},
                                                                    {3, 0, 4},
                                                                    {3, 4, 7}}};
  ztCAD_Faces* const faces = crtFaces();
  for (const auto& [i1, i2, i3] : facets)
    addFacet(crtFacet(&i1, &i2, &i3), faces);
  bool nameIsFree = false;
  return crtTriangle(name, vertices, faces, nameIsFree);
}

ztCAD_Sphere* bearing(const std::string& name, const Position& at, double mass) {
  bool nameIsFree = false;
  ztCAD_Sphere* const sphere = crtSphere(name, coord(at), 0.02, nameIsFree);
  setMIP(crtMIP({mass, at.x, at.y, at.z, 1e-5, 1e-5, 1e-5, 0, 0, 0}), sphere);
  CommonProperty steel;
  steel.comment = "подшипник";
  steel.color = ztCAD_Color(120, 120, 130);
  setCommonProperty(steel, sphere);
  return sphere;
}

/// A base plate that carries a crank, in which a coupler is nested.
ztCAD_Structure* crankOnPlate() {
  bool nameIsFree = false;
  ztCAD_Structure* const coupler = crtStructure("coupler", placedAt({0.1, 0, 0}), nameIsFree);
  addTriangleToStructure(box("bar", {0, -0.01, 0}, {0.3, 0.01, 0.02}), coupler);
  addMipElementToStructure(
      crtMipElement("coupler mass", crtMIP({0.4, 0.15, 0, 0.01, 1e-4, 3e-3, 3e-3, 0, 0, 0})), coupler);

  ztCAD_Structure* const crank = crtStructure("crank", placedAt({0, 0, 0.05}), nameIsFree);
  addTriangleToStructure(box("arm", {0, -0.01, 0}, {0.1, 0.01, 0.02}), crank);
  addSphereToStructure(bearing("crank pin", {0.1, 0, 0}, 0.05), crank);
  addStructureToStructure(coupler, crank);

  ztCAD_Structure* const mechanism = crtStructure("mechanism", placedAt({0, 0, 0}), nameIsFree);
  addTriangleToStructure(box("base plate", {-0.2, -0.1, -0.02}, {0.5, 0.1, 0}), mechanism);
  addPointToStructure(crtPoint("main bearing", coord({0, 0, 0.05}), nameIsFree), mechanism);
  addStructureToStructure(crank, mechanism);
  return mechanism;
}

/// One template bolt and three references that place it by its name.
void addBolts(ztCAD_GMDDocument* document) {
  bool nameIsFree = false;
  ztCAD_TmplTriangle* const bolt =
      crtTmplTriangle("bolt", box("bolt", {-0.005, -0.005, 0}, {0.005, 0.005, 0.01}), nameIsFree);
  addTmplTriangleToDoc(bolt, document);
  for (const double x : {-0.18, 0.15, 0.48})
    addTriangleRefToDoc(crtTriangleRef("placed bolt", placedAt({x, 0, 0}), bolt, nameIsFree), document);
}

/// The names of a structure and of the structures nested in it.
std::string outline(const ztCAD_commonStructure& structure) {
  std::string text = structure.name().toStdString();
  for (const ztCAD_commonStructure* nested : structure.structures())
    text += " > " + outline(*nested);
  return text;
}

}  // namespace

void mechanism(const std::filesystem::path& folder, Checklist& checklist) {
  checklist.step("Build a mechanism: solids, spheres, nested structures, a template placed three times");
  const std::string file = (folder / "mechanism.xml").string();
  const Document built(crtGMDDocument("crank and coupler"));
  addStructureToDoc(crankOnPlate(), built);
  addBolts(built);
  checklist.expect(save(built, file), "it is saved");
  printFile(file);

  ztCAD_Outcome outcome;
  const Document loaded(ztCAD_loadDocument(file.c_str(), &outcome));
  checklist.expect(loaded && outcome.code == ztCAD_ResultLoaded && !outcome.fault,
                   "it loads with result code 0 and passes the check");
  if (!loaded) return;
  const auto& structures = *ztCAD_getStructures(loaded);
  const std::string nesting = structures.empty() ? "" : outline(structures.front());
  checklist.expect(nesting == "mechanism > crank > coupler",
                   "the structures are nested as built: " + nesting);
  bool allPlaced = ztCAD_getTrianglesRef(loaded)->size() == 3;
  for (const ztCAD_TriangleRef& reference : *ztCAD_getTrianglesRef(loaded)) {
    std::cout << "   " << reference.name().toStdString() << " places "
              << reference.archetype().templateName().toStdString()
              << " at x = " << reference.lcs().values().at(0) << "\n";
    allPlaced =
        allPlaced && reference.archetype().templateName() == ztCAD_getTmplTriangles(loaded)->front().name();
  }
  checklist.expect(allPlaced, "all three references name the template");
}

}  // namespace demo
