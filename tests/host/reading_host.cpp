// A host that loads the given documents from files and from strings, between marks that are visible in a
// trace of its system calls. What follows the dashes is loaded only by its name: no such file is a document.
//
//   reading_host <file>... -- <no document>...

#include <unistd.h>
#include <ztCAD/ztCAD.h>
#include <algorithm>
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

/// By the call that prints nothing.
void loadSilently(const std::string& file) {
  ztCAD_Outcome outcome;
  ztCAD_endDocument(ztCAD_loadDocument(file.c_str(), &outcome));
  std::fprintf(stderr, "%d %s: %s\n", outcome.code, file.c_str(), outcome.message);
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
  char** const dashes = std::find(arguments + 1, arguments + count, std::string("--"));
  const std::vector<std::string> files(arguments + 1, dashes);
  const std::vector<std::string> noDocuments(std::min(dashes + 1, arguments + count), arguments + count);
  std::vector<std::string> texts;
  for (const std::string& file : files) {
    std::ifstream stream(file, std::ios::binary);
    texts.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  // whatever Qt and the system load once per process is loaded before the first mark
  parse("<GMD><?x a?b?></GMD>");

  mark("/silent reading begins");
  for (const std::string& file : files)
    loadSilently(file);
  for (const std::string& file : noDocuments)
    loadSilently(file);
  mark("/silent reading has ended");

  // the first message of a process makes Qt search for the settings of its log
  for (const std::string& file : noDocuments)
    load(file);

  mark("/reading begins");
  for (const std::string& file : files)
    load(file);
  for (const std::string& file : noDocuments)
    load(file);
  mark("/reading has ended, now the texts");
  for (const std::string& text : texts)
    parse(text);
  mark("/all has ended");
  return texts.size() > 10 ? 0 : 1;
}
