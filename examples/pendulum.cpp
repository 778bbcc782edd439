#include "demo.h"

#include <cmath>
#include <fstream>

namespace demo {

namespace {

/// A coordinate system at `origin`, turned by `angle` about the y axis: origin, then the three axes.
ztCAD_LCS turnedSystem(const Position& origin, double angle) {
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

/// A double pendulum: two links of 0.4 m, hanging from a fixed joint; lengths in metres.
void buildRig(ztCAD_GMDDocument* document) {
  constexpr double link = 0.4;
  constexpr double swing = 0.35;  // radians, of the upper link against the vertical
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
  joint.lcs = turnedSystem(pivot, 0);
  addPoint(document, "pivot", pivot, joint);
  joint.lcs = turnedSystem(elbow, swing);
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

/// The names of the points, as the document holds them now.
std::string namesOf(ztCAD_GMDDocument* document) {
  std::string names;
  for (const ztCAD_Point& point : *ztCAD_getPoints(document))
    names += " " + point.name().toStdString();
  return names;
}

}  // namespace

void pendulum(const std::filesystem::path& folder, Account& account) {
  const std::string file = (folder / "pendulum.xml").string();
  const Document rig(crtGMDDocument("double pendulum"));
  buildRig(rig);

  account.step("A pendulum rig is built and saved");
  SaveGMDDocument(rig, file);
  printFile(file);
  account.expect(bytesOf(file).rfind("<?xml version=\"1.0\" encoding=\"windows-1251\"?>", 0) == 0,
                 "the file begins with its declaration");

  account.step("The file is loaded again");
  std::int32_t code = -1;
  bool fault = true;
  const Document loaded(crtGMDDocumentFromFile(file, code, fault));
  std::cout << "   result code " << code << ", fault " << fault << "\n";
  print(textForm(loaded));
  account.expect(code == 0 && !fault, "result code 0, no fault");
  account.expect(ztCAD_getPoints(loaded)->size() == 4 && ztCAD_getTmplPoints(loaded)->size() == 1,
                 "four points and one template point came back");
  account.expect(checkGMDDocument(loaded), "the document check passes");
  const std::string again = (folder / "again.xml").string();
  SaveGMDDocument(loaded, again);
  const Document twice(crtGMDDocumentFromFile(again, code, fault));
  account.expect(textForm(twice) == textForm(loaded), "saved once more, it says the same");
}

void duplicateNames(const std::filesystem::path& folder, Account& account) {
  account.step("Duplicate names are renamed by saving");
  const Document document(crtGMDDocument("duplicates"));
  for (const double x : {0.0, 1.0, 2.0})
    addPoint(document, "hinge", {x, 0, 0}, {});
  std::cout << "   before:" << namesOf(document) << "\n";
  SaveGMDDocument(document, (folder / "duplicates.xml").string());
  std::cout << "   after: " << namesOf(document) << "\n";
  account.expect(namesOf(document) == " hinge hinge_$1 hinge_$2", "each name occurs once");

  std::string corrected;
  const bool changed = doCorrectName("2nd hinge", corrected, "");
  account.expect(changed && corrected == "_2nd_hinge",
                 "\"2nd hinge\" as a valid name is \"" + corrected + "\"");
}

void brokenFiles(const std::filesystem::path& folder, Account& account) {
  account.step("Broken files are refused");
  struct Case {
    const char* what;
    const char* text;  // null: there is no such file
    std::int32_t code;
  };
  const Case cases[] = {{"no such file", nullptr, 100},
                        {"a tag that is never closed", "<GMD><point name=\"a\" center=\"0, 0, 0;\">", 110},
                        {"the root is no \"GMD\"", "<drawing/>", 120}};
  for (const Case& broken : cases) {
    const std::filesystem::path file = folder / ("broken-" + std::to_string(broken.code) + ".xml");
    if (broken.text) std::ofstream(file) << broken.text;
    std::int32_t code = -1;
    bool fault = false;
    const Document document(crtGMDDocumentFromFile(file.string(), code, fault));
    account.expect(code == broken.code && ztCAD_getPoints(document)->empty(),
                   std::string(broken.what) + ": result code " + std::to_string(code));
  }
}

}  // namespace demo
