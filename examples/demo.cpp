/// A tour of the library: builds, saves, loads and checks a rig and a mechanism, shows how duplicate names
/// are renamed and how broken files are refused. Given file names, the program reports on each of these files
/// instead.

#include "demo.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

namespace demo {

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool save(ztCAD_GMDDocument* document, const std::filesystem::path& file) {
  ztCAD_Outcome outcome;
  const bool saved = ztCAD_saveDocument(document, file.string().c_str(), &outcome);
  if (!saved) std::cout << "   cannot save " << file.string() << ": " << outcome.message << "\n";
  return saved;
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

namespace {

/// Decodes the characters of windows-1251 that this program writes; any other becomes a question mark.
QChar decoded(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  if (code < 0x80) return QChar(code);
  if (code >= 0xC0) return QChar(0x410 + (code - 0xC0));  // the Russian alphabet without its seventh letter
  if (code == 0xA8) return QChar(0x401);                  // which is apart, as a capital
  if (code == 0xB8) return QChar(0x451);                  // and as a small letter
  return QChar(code == 0xB9 ? 0x2116 : '?');              // the numero sign
}

}  // namespace

void printFile(const std::filesystem::path& file) {
  const std::string bytes = bytesOf(file);
  std::cout << "   " << bytes.size() << " bytes in windows-1251:\n";
  QString text;
  for (const char byte : bytes)
    text += decoded(byte);
  print(text.toStdString());
}

}  // namespace demo

namespace {

int tour() {
  const demo::ScratchFolder folder;
  demo::Checklist checklist;
  std::cout << "ztCAD " << ztCADVersion() << "\n";
  demo::pendulum(folder.path(), checklist);
  demo::mechanism(folder.path(), checklist);
  demo::duplicateNames(folder.path(), checklist);
  demo::brokenFiles(folder.path(), checklist);
  std::cout << "\n"
            << (checklist.allPassed() ? "All checks passed." : "At least one check failed, see FAILED above.")
            << "\n";
  return checklist.allPassed() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> files(argv + 1, argv + argc);
  if (files.empty()) return tour();
  bool allLoaded = true;
  for (const std::string& file : files)
    allLoaded = demo::report(file) && allLoaded;
  return allLoaded ? 0 : 1;
}
