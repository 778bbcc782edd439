// A host that loads the given documents from files and from strings, between marks that are visible in a
// trace of its system calls.
//
//   reading_host <file>...

#include <unistd.h>
#include <ztCAD/ztCAD.h>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

void mark(const char* name) {
  if (access(name, F_OK) == 0) std::printf("a file %s exists\n", name);
}

void load(const std::string& file) {
  std::int32_t code = -1;
  bool fault = false;
  ztCAD_GMDDocument* const document = crtGMDDocumentFromFile(file, code, fault);
  DeleteGMDDoc(document);
  std::fprintf(stderr, "%d %s\n", code, file.c_str());
}

void parse(const std::string& text) {
  bool parsed = false;
  std::string message;
  int line = 0;
  int column = 0;
  DeleteGMDDoc(crtGMDDocumentFromStdString(text, parsed, message, line, column));
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> files(arguments + 1, arguments + count);
  std::vector<std::string> texts;
  for (const std::string& file : files) {
    std::ifstream stream(file, std::ios::binary);
    texts.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  // whatever Qt and the system load once per process is loaded before the first mark
  parse("<GMD><?x?></GMD>");
  if (!files.empty()) load(files.front());

  mark("/reading begins");
  for (const std::string& file : files)
    load(file);
  mark("/reading has ended, now the texts");
  for (const std::string& text : texts)
    parse(text);
  mark("/all has ended");
  return texts.size() > 10 ? 0 : 1;
}
