// Any text as a document: also what a failed parse leaves is read, and is a document like any other.

#include "documents.h"
#include "fuzzing.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace fuzzing;
  bool parsed = false;
  std::string message = "earlier";
  int line = -1;
  int column = -1;
  const Document document(
      crtGMDDocumentFromStdString(std::string(bytesOf(data, size)), parsed, message, line, column));
  require(document != nullptr, "there is a document, whatever was read");
  if (parsed) {
    require(message.empty() && line == 0 && column == 0, "a parse that succeeds tells of no fault");
  } else {
    require(!message.empty() && line >= 0 && column >= 0, "a parse that fails tells why and where");
  }
  std::string text;
  GMDDocumentToString(document.get(), text, false);
  requireRoundTrip(document.get());
  return 0;
}
