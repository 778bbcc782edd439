// A long-running host: loads, edits, saves and deletes documents in many rounds. Its memory use must not
// grow, apart from created objects, which the library keeps until it is unloaded.
//
//   soak [rounds]

#include <malloc.h>
#include <unistd.h>
#include <ztCAD/ztCAD.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

std::size_t heapInUse() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

class Folder {
 public:
  Folder() {
    if (!mkdtemp(m_path.data())) std::abort();
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::string file(const char* name) const { return m_path + '/' + name; }

 private:
  std::string m_path = std::filesystem::temp_directory_path().string() + "/ztCAD_soak_XXXXXX";
};

const std::string xml = R"(<GMD><header inform="soak"/>
  <point name="P" center="1, 2, 3;"/><point name="P" center="4, 5, 6;"/>
  <line name="L" method="polyline"><vertices>0, 0, 0; 1, 0, 0; 1, 1, 0;</vertices></line>
  <solid name="B" method="triangulation"><vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; 0, 0, 1;</vertices>
    <faces>0, 2, 1; 0, 1, 3; 0, 3, 2; 1, 2, 3;</faces></solid>
  <structure name="S" LCS=""><point name="Q" center="0"/><structure name="N">
    <structure name="M"/></structure></structure>
  <template_structure name="T"><structure name="N"/></template_structure>
  <templatePoint name="TP" center="0"/></GMD>)";

struct Objects {
  ztCAD_Point* point;
  ztCAD_Structure* structure;
};

bool succeeded = true;
void expect(bool condition, const char* what) {
  if (!condition) std::fprintf(stderr, "soak: failed: %s\n", what);
  succeeded = succeeded && condition;
}

/// The operations of a host on documents, using existing objects only.
void work(const Objects& objects, const Folder& folder, bool throughDom) {
  bool parsed = false;
  std::string message;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document =
      crtGMDDocumentFromStdString(throughDom ? xml + "<?end a?b?>" : xml, parsed, message, line, column);
  expect(parsed, "the text parses");
  expect(!addPointToDoc(objects.point, document), "a point is added");
  expect(!addStructureToDoc(objects.structure, document), "a structure is added");
  expect(removePointFromDoc(&ztCAD_getPoints(document)->front(), document), "a point is removed");
  std::string text;
  GMDDocumentToString(document, text, true);
  GMDDocumentToString(document, text, false);
  SaveGMDDocument(document, folder.file("document.xml"));
  std::int32_t code = -1;
  bool fault = true;
  ztCAD_GMDDocument* const other = crtGMDDocumentFromFile(folder.file("document.xml"), code, fault);
  expect(code == 0 && checkGMDDocument(other), "the saved document loads");
  UpdateGMDDoc(document, folder.file("absent.xml"), code, fault);
  expect(code == 100, "a missing file does not load");
  DeleteGMDDoc(document);
  DeleteGMDDoc(other);
}

/// Runs rounds that create only documents. The heap must be as large at the end as after the warm-up.
void soak(int rounds) {
  const Folder folder;
  bool nameIsFree = false;
  const double zero = 0;
  const Objects objects{crtPoint("P", crtCoord(&zero, &zero, &zero), nameIsFree),
                        crtStructure("S", crtLCS(std::vector<double>(12, 0.0)), nameIsFree)};
  constexpr int warmUp = 100;
  std::size_t before = 0;
  for (int round = 0; round < warmUp + rounds; ++round) {
    if (round == warmUp) before = heapInUse();
    work(objects, folder, round % 2 == 0);
    if (round >= warmUp && (round - warmUp) % (rounds / 10 + 1) == 0)
      std::printf("%8d rounds: %9zu bytes\n", round - warmUp, heapInUse());
  }
  const std::size_t after = heapInUse();
  std::printf("%8d rounds: %9zu bytes\n", rounds, after);
  constexpr std::size_t tolerance = 16384;  // used by the C library, independent of the number of rounds
  expect(after <= before + tolerance, "the heap does not grow");
}

/// Prints how many bytes one call allocates until the library is unloaded.
void printCost(const char* name, const std::function<void()>& create) {
  constexpr int count = 10000;
  const std::size_t before = heapInUse();
  for (int i = 0; i < count; ++i)
    create();
  std::printf("%-22s %5.0f bytes\n", name, static_cast<double>(heapInUse() - before) / count);
}

void printCosts() {
  bool isFree = false;
  const double zero = 0;
  const std::uint32_t index = 0;
  const std::string name = "a name";
  const std::vector<double> ten(10, 1.0);
  const std::vector<double> twelve(12, 1.0);
  ztCAD_Coord* const coord = crtCoord(&zero, &zero, &zero);
  ztCAD_LCS* const lcs = crtLCS(twelve);
  ztCAD_Vertices* const vertices = crtVertices();
  for (int i = 0; i < 3; ++i)
    addVertex(crtVertexByCoord(coord), vertices);
  ztCAD_Faces* const faces = crtFaces();
  ztCAD_TmplPoint* const templatePoint = crtTmplPoint(name, crtPoint(name, coord, isFree), isFree);
  printCost("crtCoord", [&] { crtCoord(&zero, &zero, &zero); });
  printCost("crtVertex", [&] { crtVertex(&zero, &zero, &zero); });
  printCost("crtFacet", [&] { crtFacet(&index, &index, &index); });
  printCost("crtColor", [&] { crtColor(&index, &index, &index); });
  printCost("crtLCS", [&] { crtLCS(twelve); });
  printCost("crtMIP", [&] { crtMIP(ten); });
  printCost("crtVertices", [&] { crtVertices(); });
  printCost("crtFaces", [&] { crtFaces(); });
  printCost("crtPoint", [&] { crtPoint(name, coord, isFree); });
  printCost("crtPolyline, 3 vertices", [&] { crtPolyline(name.c_str(), vertices, isFree); });
  printCost("crtTriangle, 3 vertices", [&] { crtTriangle(name, vertices, faces, isFree); });
  printCost("crtSphere", [&] { crtSphere(name, coord, 1, isFree); });
  printCost("crtStructure", [&] { crtStructure(name, lcs, isFree); });
  printCost("crtPointRef", [&] { crtPointRef(name, lcs, templatePoint, isFree); });
  printCost("crtGMDDocument, deleted", [&] { DeleteGMDDoc(crtGMDDocument(name)); });
}

}  // namespace

int main(int count, char** arguments) {
  // blocks in malloc's per-thread cache count as used; the C library reads this variable once, when a process
  // starts
  if (!std::getenv("GLIBC_TUNABLES")) {
    setenv("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0", 1);
    execv("/proc/self/exe", arguments);
  }
  const int rounds = count > 1 ? std::atoi(arguments[1]) : 2000;
  if (rounds <= 0) {
    std::fprintf(stderr, "usage: soak [rounds]\n");
    return 2;
  }
  soak(rounds);
  printCosts();
  return succeeded ? 0 : 1;
}
