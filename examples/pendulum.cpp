#include "demo.h"

#include <cmath>
#include <fstream>

namespace demo {

namespace {

/// A coordinate system at `origin`, rotated by `angle` about the y axis: the origin, then the three axes.
ztCAD_LCS rotatedSystem(const Position& origin, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return *crtLCS({origin.x, origin.y, origin.z, c, 0, -s, 0, 1, 0, s, 0, c});
}

void addPoint(ztCAD_GMDDocument* document, const std::string& name, const Position& at,
              const CommonProperty& properties) {
  bool nameIsFree = false;
  ztCAD_Point* const point = crtPoint(name, coord(at), nameIsFree);
  setCommonProperty(properties, point);
  addPointToDoc(point, document);
}

/// A double pendulum: two links of 0.4 m below a fixed joint; lengths in metres.
void buildRig(ztCAD_GMDDocument* document) {
  constexpr double link = 0.4;
  constexpr double swing = 0.35;  // angle between the upper link and the vertical, in radians
  const Position pivot{0, 0, 1};
  const Position elbow{link * std::sin(swing), 0, 1 - link * std::cos(swing)};
  const Position tip{elbow.x, 0, elbow.z - link};
  const auto middle = [](const Position& a, const Position& b) {
    return Position{(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
  };

  CommonProperty joint;
  joint.comment = "hinge about y";
  joint.color = ztCAD_Color(200, 30, 30);
  joint.visible = ztCAD_Visible(true);
  joint.lcs = rotatedSystem(pivot, 0);
  addPoint(document, "pivot", pivot, joint);
  joint.lcs = rotatedSystem(elbow, swing);
  addPoint(document, "elbow", elbow, joint);

  CommonProperty massCentre;
  massCentre.comment = "центр масс";
  massCentre.inform = "0.8 kg";
  massCentre.color = ztCAD_Color(30, 30, 200);
  massCentre.visible = ztCAD_Visible(false);
  addPoint(document, "upper link", middle(pivot, elbow), massCentre);
  addPoint(document, "lower link", middle(elbow, tip), massCentre);

  bool nameIsFree = false;
  addTmplPointToDoc(crtTmplPoint("marker", crtPoint("tip", coord(tip), nameIsFree), nameIsFree), document);

  ztCAD_HeaderNode header;
  header.setInform(QString::fromUtf8("double pendulum"));
  header.setMajorVersion(2);
  header.setMinorVersion(1);
  header.setProducerName(QString::fromUtf8("pendulum"));
  setHeader(&header, document);
}

/// The current names of the points.
std::string namesOf(ztCAD_GMDDocument* document) {
  std::string names;
  for (const ztCAD_Point& point : *ztCAD_getPoints(document))
    names += " " + point.name().toStdString();
  return names;
}

}  // namespace

void pendulum(const std::filesystem::path& folder, Checklist& checklist) {
  const std::string file = (folder / "pendulum.xml").string();
  const Document rig(crtGMDDocument("double pendulum"));
  buildRig(rig);

  checklist.step("Build and save a pendulum rig");
  checklist.expect(save(rig, file), "it is saved");
  printFile(file);
  checklist.expect(bytesOf(file).rfind("<?xml version=\"1.0\" encoding=\"windows-1251\"?>", 0) == 0,
                   "the file begins with its XML declaration");

  checklist.step("Load the file");
  ztCAD_Outcome outcome;
  const Document loaded(ztCAD_loadDocument(file.c_str(), &outcome));
  std::cout << "   result code " << outcome.code << ", fault " << outcome.fault << "\n";
  checklist.expect(loaded && outcome.code == ztCAD_ResultLoaded && !outcome.fault,
                   "it loads with result code 0 and no fault");
  if (!loaded) return;
  print(textForm(loaded));
  checklist.expect(ztCAD_getPoints(loaded)->size() == 4 && ztCAD_getTmplPoints(loaded)->size() == 1,
                   "it holds four points and one template point");
  checklist.expect(checkGMDDocument(loaded), "the document check passes");
  const std::string again = (folder / "again.xml").string();
  const bool saved = save(loaded, again);
  const Document twice(ztCAD_loadDocument(again.c_str(), &outcome));
  checklist.expect(saved && twice && textForm(twice) == textForm(loaded),
                   "after another save and load the document is the same");
}

void duplicateNames(const std::filesystem::path& folder, Checklist& checklist) {
  checklist.step("Save duplicate names: the library renames them");
  const Document document(crtGMDDocument("duplicates"));
  for (const double x : {0.0, 1.0, 2.0})
    addPoint(document, "hinge", {x, 0, 0}, {});
  std::cout << "   before:" << namesOf(document) << "\n";
  const bool saved = save(document, folder / "duplicates.xml");
  std::cout << "   after: " << namesOf(document) << "\n";
  checklist.expect(saved && namesOf(document) == " hinge hinge_$1 hinge_$2", "each name occurs once");

  std::string corrected;
  const bool changed = doCorrectName("2nd hinge", corrected, "");
  checklist.expect(changed && corrected == "_2nd_hinge",
                   "\"2nd hinge\" is corrected to the valid name \"" + corrected + "\"");
}

void brokenFiles(const std::filesystem::path& folder, Checklist& checklist) {
  checklist.step("Load broken files: the library refuses them");
  struct Case {
    const char* what;
    const char* text;  // null: the file does not exist
    std::int32_t code;
  };
  const Case cases[] = {{"missing file", nullptr, 100},
                        {"element that is not closed", "<GMD><point name=\"a\" center=\"0, 0, 0;\">", 110},
                        {"root element other than \"GMD\"", "<drawing/>", 120}};
  for (const Case& broken : cases) {
    const std::filesystem::path file = folder / ("broken-" + std::to_string(broken.code) + ".xml");
    if (broken.text) std::ofstream(file) << broken.text;
    ztCAD_Outcome outcome;
    const Document document(ztCAD_loadDocument(file.string().c_str(), &outcome));
    checklist.expect(!document && outcome.code == broken.code, std::string(broken.what) + ": result code " +
                                                                   std::to_string(outcome.code) + ", \"" +
                                                                   outcome.message + "\"");
  }
}

}  // namespace demo
