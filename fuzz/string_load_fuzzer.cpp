// Loads arbitrary text as a document. A failed parse also yields a document, which must save and load like
// any other.

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
  require(document != nullptr, "loading returns a document for any text");
  if (parsed) {
    require(message.empty() && line == 0 && column == 0,
            "a successful parse leaves message and position empty");
  } else {
    require(!message.empty() && line >= 0 && column >= 0, "a failed parse reports a message and a position");
  }
  std::string text;
  GMDDocumentToString(document.get(), text, false);
  requireRoundTrip(document.get());
  return 0;
}
