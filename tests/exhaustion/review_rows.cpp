#include "scratch_folder.h"
#include "trial.h"

namespace exhaustion {

namespace {

/// A document with an element of every kind and with findings of many rules.
std::string reviewedText() {
  std::string text = bytesOf(ZTCAD_TEST_GOLDEN_FOLDER "/P_every_kind.xml");
  text.insert(text.find("</GMD>"),
              "<!-- c --><point name='a' name='a' Color=''/><line name='a' method='polyline'>t<vertices>1,2;"
              "1.2345678,2,3;</vertices></line><template_detail name='d'/><template_detail name='d'/>");
  return text;
}

/// What a host sees of a review.
std::string findingsOf(const ztCAD_Review* review) {
  std::string text;
  for (std::int64_t i = 0; i < ztCAD_findingCount(review); ++i) {
    const ztCAD_Finding& finding = *ztCAD_findingAt(review, i);
    text += finding.rule + std::string(finding.message) + finding.path + std::to_string(finding.place.offset);
  }
  return text;
}

/// @param make returns a review, or null
template <typename Make>
Trial reviews(Make make) {
  auto* const review = new ztCAD_Review*(nullptr);
  return {[=] { return (*review = make()) ? Report::Success : Report::Failure; },
          [=] { return *review ? findingsOf(*review) : std::string("null"); }};
}

Trial reviewsText(const std::string& text) {
  return reviews([text = new std::string(text)] {
    ztCAD_Outcome outcome;
    return ztCAD_reviewText(text->data(), static_cast<std::int64_t>(text->size()), -1, &outcome);
  });
}

ztCAD_Review* finishedReview() { return ztCAD_reviewText(reviewedText().c_str(), -1, -1, nullptr); }

/// A failure leaves the findings of the review as they were.
Trial addsFindings() {
  ztCAD_Review* const review = finishedReview();
  const std::string former = findingsOf(review);
  const ztCAD_AddedFinding finding = {ztCAD_SeverityNote, "a-rule", "A message.", nullptr, "name", 1};
  return {[=] { return ztCAD_addFindings(review, &finding, 1) ? Report::Success : Report::Failure; },
          [=] { return findingsOf(review); }};
}

bool appendBytes(const char* bytes, std::int64_t size, void* context) {
  auto& text = *static_cast<std::pair<char*, std::size_t>*>(context);
  std::copy_n(bytes, size, text.first + text.second);
  text.second += static_cast<std::size_t>(size);
  return true;
}

/// A save into memory that is allocated before the call.
Trial savesToMemory() {
  constexpr std::size_t size = 65536;
  auto* const saved = new std::pair<char*, std::size_t>(new char[size], 0);
  ztCAD_GMDDocument* const document = fullDocument();
  auto* const succeeded = new bool(false);
  return {[=] {
            ztCAD_Outcome outcome;
            saved->second = 0;
            *succeeded = ztCAD_saveDocumentTo(document, appendBytes, saved, &outcome);
            return *succeeded ? Report::Success : Report::Failure;
          },
          [=] { return *succeeded ? std::string(saved->first, saved->second) : std::string("not saved"); }};
}

const Row rows[] = {
    {"ztCAD_reviewFile", "",
     [] {
       const auto* const file = new std::string(processFolder() + ".xml");
       putBytes(*file, reviewedText());
       return reviews([file] {
         ztCAD_Outcome outcome;
         return ztCAD_reviewFile(file->c_str(), -1, &outcome);
       });
     }},
    {"ztCAD_reviewText", "", [] { return reviewsText(reviewedText()); }},
    {"ztCAD_reviewText", "not plain XML", [] { return reviewsText(reviewedText() + "<?end a?b?>"); }},
    {"ztCAD_reviewText", "not well-formed", [] { return reviewsText("<GMD><a></GMD>"); }},
    {"ztCAD_findingCount", "",
     [] { return answers([review = finishedReview()] { return ztCAD_findingCount(review); }); }},
    {"ztCAD_omittedFindings", "",
     [] { return answers([review = finishedReview()] { return ztCAD_omittedFindings(review, 0); }); }},
    {"ztCAD_findingAt", "",
     [] { return points([review = finishedReview()] { return ztCAD_findingAt(review, 0); }); }},
    {"ztCAD_addFindings", "", [] { return addsFindings(); }},
    {"ztCAD_takeReviewedDocument", "",
     [] { return creates([review = finishedReview()] { return ztCAD_takeReviewedDocument(review); }); }},
    {"ztCAD_endReview", "",
     [] {
       return Trial{[review = finishedReview()] { return ztCAD_endReview(review), Report::Nothing; },
                    [] { return std::string(); }};
     }},
    {"ztCAD_ruleCount", "", [] { return answers(ztCAD_ruleCount, ztCAD_ruleCount()); }},
    {"ztCAD_ruleAt", "", [] { return points([] { return ztCAD_ruleAt(0); }); }},
    {"ztCAD_kindWord", "", [] { return points([] { return ztCAD_kindWord(ztCAD_ElementPoint); }); }},
    {"ztCAD_saveDocumentTo", "", [] { return savesToMemory(); }},
};

}  // namespace

std::vector<Row> reviewRows() { return {std::begin(rows), std::end(rows)}; }

}  // namespace exhaustion
