#include "loading.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "../../number/floating_point.h"
#include "../../text/narrow_text.h"
#include "../../text/text_limits.h"
#include "../../text/wide_utf8.h"
#include "../../xml/plain_xml.h"
#include "../../xml/xml_view.h"
#include "check.h"
#include "file.h"
#include "loaded_text.h"
#include "root_reader.h"
#include "unification.h"

namespace ztcad {

struct DocumentLoader::Source {
  Source(TextBytes text, XmlBytes textKind) : bytes(shared(std::move(text))), kind(textKind) {}

  /// Not by std::make_shared: then the DLL would export a symbol of libstdc++.
  static std::shared_ptr<const TextBytes> shared(TextBytes text) {
    return std::shared_ptr<const TextBytes>(new TextBytes(std::move(text)));  // NOLINT(modernize-make-shared)
  }

  std::shared_ptr<const TextBytes> bytes;
  XmlBytes kind;

  std::string_view text() const { return bytes->view(); }
};

namespace {

LoadOutcome failure(std::int32_t code, const QString& message) {
  LoadOutcome outcome;
  outcome.code = code;
  outcome.message = message;
  return outcome;
}

}  // namespace

/// The file is longer than what memory can hold.
LoadOutcome DocumentLoader::refuseLength() const {
  const QLatin1String message(TooLong::text);
  if (m_reviewed) *m_reviewed = ReviewedLoad(m_review->limit(), Rule::text_refused, message);
  return failure(ztCAD_GMDDocument::NotParsed, message);
}

LoadOutcome DocumentLoader::loadFile(std::string_view fileName) {
  FileBytes file = readFile(fileNameOf(fileName), longestFile);
  switch (file.outcome) {
    case ReadOutcome::Missing:
      return failure(ztCAD_GMDDocument::FileMissing, QLatin1String("no such file"));
    case ReadOutcome::TooLong:
      return refuseLength();
    case ReadOutcome::Failed:
      return failure(file.error.code, file.error.message);
    case ReadOutcome::Done:
      break;
  }
  return load({std::move(file.bytes), XmlBytes::AsDeclared}, TextRules::Strict);
}

LoadOutcome DocumentLoader::loadText(std::string_view xml, TextRules rules) {
  // valid UTF-8 is text, whatever its declaration says; other bytes are decoded as they declare
  const XmlBytes kind = isUtf8(xml) ? XmlBytes::Utf8 : XmlBytes::AsDeclared;
  return load({TextBytes(xml), kind}, rules);
}

LoadOutcome DocumentLoader::load(Source source, TextRules rules) {
  const DefaultFloatingPoint environment;
  std::unique_ptr<XmlText> text;
  LoadOutcome outcome = load(source, rules, text);
  if (m_review) {
    if (text && outcome.replaced) reviewDecoding(source, *text);
    m_review->finish();
    if (!text) text = std::make_unique<XmlText>(source.text(), source.kind);
    *m_reviewed = ReviewedLoad(*m_review, std::move(source.bytes), std::move(text));
  }
  return outcome;
}

/// Reports what the text lost when it was decoded.
void DocumentLoader::reviewDecoding(const Source& source, const XmlText& text) const {
  if (!text.unknownEncoding().empty()) {
    const QString name = fromWideUtf8(text.unknownEncoding());
    m_review->report(Rule::unknown_encoding, text.characters().data(), {argumentText(Quoted{name})});
  }
  const Occurrences replaced = replacedBytes(source.text(), text);
  if (replaced.count > 0) m_review->report(Rule::invalid_bytes, replaced);
}

/// @param text output: set if the text is not plain
LoadOutcome DocumentLoader::load(Source& source, TextRules rules, std::unique_ptr<XmlText>& text) {
  // places in the source, which only a review needs, take its bytes
  const auto isDecoded = [&] { return text && text->isCopy() && !m_review; };
  LoadOutcome outcome;
  outcome.code = ztCAD_GMDDocument::Loaded;
  Reader reader = readPlain(source.text(), source.kind, rules);
  if (!reader) {
    text = std::make_unique<XmlText>(source.text(), source.kind);
    // UTF-16 takes twice the memory of its characters
    if (isDecoded()) source.bytes = Source::shared({});
    if (text->isCopy() && !text->refusal()) reader = readPlain(text->characters(), XmlBytes::Decoded, rules);
    if (!reader) reader = readAny(*text, rules, outcome);
  }
  if (!reader) return outcome;
  const Names names = nameElements(*reader);
  if (rules == TextRules::Strict && !passesCheckAsRead(reader->content(), names)) {
    outcome.code = ztCAD_GMDDocument::NotADocument;
    outcome.message = QLatin1String("the document check failed");
  }
  outcome.fault = reader->fault();
  takeOver(*reader, isDecoded() ? std::make_unique<LoadedText>(text->takeCharacters())
                                : std::make_unique<LoadedText>(source.bytes, source.kind));
  outcome.replaced = true;
  return outcome;
}

/// Reads a text without a tree; null if the plain reader does not accept it or the rules refuse its root.
DocumentLoader::Reader DocumentLoader::readPlain(std::string_view text, XmlBytes kind,
                                                 TextRules rules) const {
  auto reader = std::make_unique<RootReader>(m_document.header());
  bool rootIsRight = true;
  const auto readRoot = [&](const ElementView& root) {
    rootIsRight = rules == TextRules::Lenient || root.tag() == words().gmd;
    if (m_review) m_review->enterRoot(root);
    if (rootIsRight) reader->readRoot(root);
  };
  const bool isPlain = readPlainXml(text, kind, readRoot, m_review.get());
  if (isPlain && rootIsRight) return reader;
  if (m_review) m_review->clear();
  return nullptr;
}

/// Reads any text; null, with the reason in `outcome`, if the rules refuse it.
DocumentLoader::Reader DocumentLoader::readAny(const XmlText& text, TextRules rules,
                                               LoadOutcome& outcome) const {
  auto reader = std::make_unique<RootReader>(m_document.header());
  bool rootIsRight = false;
  QString rootTag;
  const char* rootPosition = nullptr;
  const auto readRoot = [&](const ElementView& root) {
    rootTag = root.tag();
    rootPosition = root.position();
    rootIsRight = rootTag == words().gmd;
    if (m_review) m_review->enterRoot(root);
    if (rootIsRight || rules == TextRules::Lenient) reader->readRoot(root);
  };
  const ParseOutcome parse = readXml(text, readRoot, m_review.get());
  if (!parse.parsed) {
    outcome = failure(ztCAD_GMDDocument::NotParsed, parse.message);
    outcome.line = parse.line;
    outcome.column = parse.column;
    reportAlone(parse.isRefused ? Rule::text_refused : Rule::not_well_formed,
                text.characters().data() + parse.offset, parse.message);
    if (rules == TextRules::Strict) return nullptr;
    if (parse.isRefused) reader = std::make_unique<RootReader>(m_document.header());
  } else if (rules == TextRules::Strict && !rootIsRight) {
    outcome = failure(ztCAD_GMDDocument::NotADocument, QLatin1String("the root element is not \"GMD\""));
    reportAlone(Rule::wrong_root, rootPosition, argumentText(Quoted{rootTag}));
    return nullptr;
  }
  return reader;
}

/// Reports why nothing was read.
void DocumentLoader::reportAlone(Rule rule, const char* position, const QString& argument) const {
  if (!m_review) return;
  m_review->clear();
  m_review->report(rule, position, {argument});
}

/// Makes the names unique and reports that, and the names of templates that are not.
Names DocumentLoader::nameElements(RootReader& reader) const {
  if (!m_review) {
    Names names = Names::Unique;
    unifyNamesAsRead(
        reader.content(), reader.names(),
        [&names](const ztCAD_Base& /*element*/, const QString& /*former*/) { names = Names::Any; });
    return names;
  }
  std::unordered_map<const ztCAD_Base*, QString> renamed;
  unifyNamesAsRead(
      reader.content(), reader.names(),
      [&renamed](const ztCAD_Base& element, const QString& former) { renamed.emplace(&element, former); });
  const Names names = renamed.empty() ? Names::Unique : Names::Any;
  std::unordered_set<const ztCAD_Base*> duplicates;
  forEachDuplicate(
      reader.content(), [&duplicates](const ztCAD_Base& element) { duplicates.insert(&element); }, names);
  if (renamed.empty() && duplicates.empty()) return names;
  m_review->beginAfterReading();
  for (const ElementInText& element : m_review->elements()) {
    const QString& name = element.element->name();
    const auto rename = renamed.find(element.element);
    const QString& former = rename == renamed.end() ? name : rename->second;
    if (rename != renamed.end())
      m_review->report(element, Rule::name_renamed, former, {argumentText(Quoted{name})});
    if (duplicates.count(element.element) > 0)
      m_review->report(element, Rule::duplicate_template_name, former, {argumentText(Quoted{name})});
  }
  return names;
}

/// Moves what was read into the document. Everything that can throw comes first, so the change is all or
/// nothing.
void DocumentLoader::takeOver(RootReader& reader, std::unique_ptr<LoadedText> text) {
  if (m_owner == NestedOwner::Everyone) shareReadStructures(reader.nested());
  m_document.m_content.swap(reader.content());
  m_document.m_ownStructures.swap(reader.nested());
  m_document.m_header = reader.header();
  m_document.m_loaded = std::move(text);
}

void EndAlone::operator()(ztCAD_GMDDocument* document) const noexcept {
  document->m_endsSharedStructures = false;
  delete document;
}

}  // namespace ztcad
