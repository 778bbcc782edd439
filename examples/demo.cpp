/// The main job of the library, from end to end: a rig and a mechanism are built, saved, loaded and checked,
/// duplicate names are renamed, and broken files are refused. Given file names, the program reports on each
/// of them instead.

#include "demo.h"

#include <fstream>
#include <iterator>
#include <QTextCodec>
#include <sstream>
#include <vector>

namespace demo {

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string textForm(const ztCAD_GMDDocument* document) {
  std::string text;
  GMDDocumentToString(document, text, true);
  return text;
}

void print(const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    std::cout << "   | " << line << "\n";
}

void printFile(const std::filesystem::path& file) {
  const std::string bytes = bytesOf(file);
  std::cout << "   " << bytes.size() << " bytes in windows-1251:\n";
  const auto size = static_cast<int>(bytes.size());
  print(QTextCodec::codecForName("windows-1251")->toUnicode(bytes.data(), size).toStdString());
}

}  // namespace demo

namespace {

int mainJob() {
  const demo::ScratchFolder folder;
  demo::Account account;
  std::cout << "ztCAD " << ztCADVersion() << "\n";
  demo::pendulum(folder.path(), account);
  demo::mechanism(folder.path(), account);
  demo::duplicateNames(folder.path(), account);
  demo::brokenFiles(folder.path(), account);
  std::cout << "\n"
            << (account.allWell() ? "All went as it must." : "Something went wrong, see FAILED above.")
            << "\n";
  return account.allWell() ? 0 : 1;
}

template <typename Element>
void count(const ztCAD_Cont<Element>* elements, const char* what) {
  if (!elements->empty()) std::cout << "   " << elements->size() << " " << what << "\n";
}

void countElements(ztCAD_GMDDocument* document) {
  count(ztCAD_getPoints(document), "points");
  count(ztCAD_getLines(document), "lines");
  count(ztCAD_getSpheres(document), "spheres");
  count(ztCAD_getTriangles(document), "triangulated solids");
  count(ztCAD_getMipElements(document), "mass-inertia elements");
  count(ztCAD_getDetails(document), "details");
  count(ztCAD_getStructures(document), "structures");
  count(ztCAD_getTmplPoints(document), "template points");
  count(ztCAD_getTmplLines(document), "template lines");
  count(ztCAD_getTmplTriangles(document), "template solids");
  count(ztCAD_getTmplElementMips(document), "template mass-inertia elements");
  count(ztCAD_getTmplDetails(document), "template details");
  count(ztCAD_getTmplStructures(document), "template structures");
}

bool reportOn(const std::string& file) {
  std::int32_t code = -1;
  bool fault = false;
  const demo::Document document(crtGMDDocumentFromFile(file, code, fault));
  std::cout << file << "\n   result code " << code;
  if (code == 0 || code == 120)
    std::cout << (fault ? ", some element could not read itself" : ", every element read itself")
              << ", the check " << (checkGMDDocument(document) ? "passes" : "fails");
  std::cout << "\n";
  countElements(document);
  return code == 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> files(argv + 1, argv + argc);
  if (files.empty()) return mainJob();
  bool allLoaded = true;
  for (const std::string& file : files)
    allLoaded = reportOn(file) && allLoaded;
  return allLoaded ? 0 : 1;
}
