#include "documents.h"

#include "fuzzing.h"
#include "temporary_files.h"

namespace fuzzing {

namespace {

const TemporaryFiles& files() {
  static const TemporaryFiles folder;
  return folder;
}

bool passes(ztCAD_GMDDocument* document) {
  const bool answer = checkGMDDocument(document);
  require(checkGMDDocument(document) == answer, "the check answers the same twice");
  return answer;
}

}  // namespace

std::string fileWith(std::string_view bytes) { return files().put("loaded.xml", std::string(bytes)); }

Loaded load(std::string_view bytes) {
  Loaded loaded;
  bool fault = true;
  loaded.document.reset(crtGMDDocumentFromFile(fileWith(bytes), loaded.code, fault));
  require(loaded.document != nullptr, "there is a document, whatever was loaded");
  require(loaded.code == 0 || loaded.code == 110 || loaded.code == 120,
          "the code is one of a file that opens");
  require(loaded.code != 110 || !fault, "there is no fault where nothing was read");
  if (loaded.code == 0) require(passes(loaded.document.get()), "what loads with code 0 passes the check");
  return loaded;
}

std::string saved(ztCAD_GMDDocument* document) {
  const std::string file = files().path("saved.xml");
  SaveGMDDocument(document, file);
  std::string bytes = textBytesOf(file);
  require(!bytes.empty(), "the document was saved");
  return bytes;
}

namespace {
// Each load and each save makes names unique once, and one pass may leave a name twice: the copy is one pass ahead when it
// is saved, so the document is saved twice more before both are compared.
void requireStable(ztCAD_GMDDocument* document) {
  const std::string first = saved(document);
  const std::string second = saved(document);
  const std::string third = saved(document);
  require(second != first || third == second, "names that are unique stay");

  const Loaded copy = load(first);
  require(copy.code != 110, "what was saved is well-formed");
  require(saved(copy.document.get()) == third, "what was saved loads to the same bytes");

  const Loaded last = load(third);
  require(saved(copy.document.get()) == saved(last.document.get()), "and so on");
  require(passes(copy.document.get()) == passes(last.document.get()), "the check answers the same for both");
}
}  // namespace

// What an element lacks, its text says in some way or other (a sphere without a radius has the radius 0), and with that it
// is read back. What is nested in a template is written as a template, and there no template is read. So the first two
// copies may differ.
void requireRoundTrip(ztCAD_GMDDocument* document) {
  const Loaded copy = load(saved(document));
  require(copy.code != 110, "what was saved is well-formed");
  const Loaded settled = load(saved(copy.document.get()));
  requireStable(settled.document.get());
}

}  // namespace fuzzing
