// Any bytes as a file.

#include "documents.h"
#include "fuzzing.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace fuzzing;
  const Loaded loaded = load(bytesOf(data, size));
  ztCAD_GMDDocument* const document = loaded.document.get();
  if (loaded.code == 110) {
    const Document empty(crtGMDDocument(std::string()));
    require(saved(document) == saved(empty.get()), "what does not parse leaves the document empty");
    return 0;
  }
  std::string text;
  GMDDocumentToString(document, text, true);
  require(!text.empty(), "the document is told as text");
  GMDDocumentToString(document, text, false);
  require(!text.empty(), "the document is told as XML");
  requireRoundTrip(document);
  return 0;
}
