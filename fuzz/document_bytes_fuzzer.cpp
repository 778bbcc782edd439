// Loads arbitrary bytes as a file.

#include "documents.h"
#include "fuzzing.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace fuzzing;
  const Loaded loaded = load(bytesOf(data, size));
  ztCAD_GMDDocument* const document = loaded.document.get();
  if (loaded.code == 110) {
    const Document empty(crtGMDDocument(std::string()));
    require(saved(document) == saved(empty.get()), "a file that does not parse yields an empty document");
    return 0;
  }
  std::string text;
  GMDDocumentToString(document, text, true);
  require(!text.empty(), "the document has a text form");
  GMDDocumentToString(document, text, false);
  require(!text.empty(), "the document has an XML form");
  requireRoundTrip(document);
  return 0;
}
