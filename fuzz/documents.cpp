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
  const bool passed = checkGMDDocument(document);
  require(checkGMDDocument(document) == passed, "a repeated check returns the same result");
  return passed;
}

/// A review of the file that was written last comes to the same result, and finds an error exactly if the
/// load fails or raises the fault flag.
void requireReview(bool fault, std::int32_t code) {
  ztCAD_Outcome outcome;
  constexpr std::int64_t limit = 20;
  ztCAD_Review* const review = ztCAD_reviewFile(files().path("loaded.xml").c_str(), limit, &outcome);
  require(outcome.code == code && outcome.fault == fault, "a review loads as a load does");
  std::int64_t errors = ztCAD_omittedFindings(review, ztCAD_SeverityError);
  for (std::int64_t i = 0; i < ztCAD_findingCount(review); ++i)
    errors += ztCAD_findingAt(review, i)->severity == ztCAD_SeverityError ? 1 : 0;
  require((errors == 0) == (code == 0 && !fault), "errors are the reasons for a code or fault");
  ztCAD_endReview(review);
}

}  // namespace

std::string fileWith(std::string_view bytes) { return files().put("loaded.xml", std::string(bytes)); }

Loaded load(std::string_view bytes) {
  Loaded loaded;
  bool fault = true;
  loaded.document.reset(crtGMDDocumentFromFile(fileWith(bytes), loaded.code, fault));
  require(loaded.document != nullptr, "loading returns a document for any file");
  require(loaded.code == 0 || loaded.code == 110 || loaded.code == 120,
          "the result code is one of those for a file that opens");
  require(loaded.code != 110 || !fault, "no fault is reported if nothing was read");
  requireReview(fault, loaded.code);
  if (loaded.code == 0)
    require(passes(loaded.document.get()), "a document loaded with code 0 passes the check");
  return loaded;
}

std::string saved(ztCAD_GMDDocument* document) {
  const std::string file = files().path("saved.xml");
  ztCAD_Outcome outcome;
  if (!ztCAD_saveDocument(document, file.c_str(), &outcome)) {
    const bool isTooDeep = std::string_view(outcome.message).find("nested deeper") != std::string_view::npos;
    require(isTooDeep, "a save is refused only because of its depth");
    return {};
  }
  std::string bytes = textBytesOf(file);
  require(!bytes.empty(), "the document was saved");
  return bytes;
}

namespace {
// Each load and each save runs name unification once, and one pass may leave a duplicate name. The copy has
// had one pass more when it is saved, so the document is saved two more times before both are compared.
void requireStable(ztCAD_GMDDocument* document) {
  const std::string first = saved(document);
  const std::string second = saved(document);
  const std::string third = saved(document);
  require(second != first || third == second, "unique names do not change");

  const Loaded copy = load(first);
  require(copy.code != 110, "a saved document is well-formed");
  require(saved(copy.document.get()) == third, "a loaded copy saves to the same bytes");

  const Loaded last = load(third);
  require(saved(copy.document.get()) == saved(last.document.get()), "a second copy saves to the same bytes");
  require(passes(copy.document.get()) == passes(last.document.get()),
          "the check returns the same for both copies");
}
}  // namespace

// A missing value is saved as a default (a sphere without a radius is saved with radius 0) and is present
// after loading. Elements nested in a template are written as templates, and templates are ignored there when
// read. The first two copies may therefore differ.
void requireRoundTrip(ztCAD_GMDDocument* document) {
  const std::string bytes = saved(document);
  if (bytes.empty()) return;  // refused
  const Loaded copy = load(bytes);
  require(copy.code != 110, "a saved document is well-formed");
  const Loaded settled = load(saved(copy.document.get()));
  requireStable(settled.document.get());
}

}  // namespace fuzzing
