#include "loading.h"

#include <utility>

#include "../../number/floating_point.h"
#include "../../text/narrow_text.h"
#include "../../xml/plain_xml.h"
#include "../../xml/xml_view.h"
#include "check.h"
#include "file.h"
#include "loaded_text.h"
#include "root_reader.h"
#include "unification.h"

namespace ztcad {

struct DocumentLoader::Source {
  QByteArray bytes;
  XmlBytes kind;

  std::string_view text() const { return {bytes.constData(), static_cast<std::size_t>(bytes.size())}; }
};

namespace {

LoadOutcome failure(std::int32_t code, const QString& message) {
  LoadOutcome outcome;
  outcome.code = code;
  outcome.message = message;
  return outcome;
}

LoadOutcome tooLong() { return failure(ztCAD_GMDDocument::NotParsed, QLatin1String("text too long")); }

}  // namespace

LoadOutcome DocumentLoader::loadFile(std::string_view fileName) {
  FileBytes file = readFile(fileNameOf(fileName), longestXml);
  switch (file.outcome) {
    case ReadOutcome::Missing:
      return failure(ztCAD_GMDDocument::FileMissing, QLatin1String("no such file"));
    case ReadOutcome::TooLong:
      return tooLong();
    case ReadOutcome::Failed:
      return failure(file.error.code, file.error.message);
    case ReadOutcome::Done:
      break;
  }
  return load({std::move(file.bytes), XmlBytes::AsDeclared}, TextRules::Strict);
}

LoadOutcome DocumentLoader::loadText(const std::string& xml, TextRules rules) {
  if (xml.size() > longestXml) {
    LoadOutcome outcome = tooLong();
    if (rules == TextRules::Lenient) {
      RootReader nothing(m_document.header());
      takeOver(nothing, {QByteArray(), XmlBytes::AsDeclared});
      outcome.replaced = true;
    }
    return outcome;
  }
  // valid UTF-8 is text, whatever its declaration says; other bytes are decoded as they declare
  const XmlBytes kind = isUtf8(xml) ? XmlBytes::Utf8 : XmlBytes::AsDeclared;
  return load({QByteArray(xml.data(), static_cast<int>(xml.size())), kind}, rules);
}

LoadOutcome DocumentLoader::load(const Source& source, TextRules rules) {
  const DefaultFloatingPoint environment;
  LoadOutcome outcome;
  outcome.code = ztCAD_GMDDocument::Loaded;
  Reader reader = readPlain(source, rules);
  if (!reader) reader = readAny(source, rules, outcome);
  if (!reader) return outcome;
  unifyNames(reader->content());
  if (rules == TextRules::Strict && !passesCheck(reader->content())) {
    outcome.code = ztCAD_GMDDocument::NotADocument;
    outcome.message = QLatin1String("the document check failed");
  }
  outcome.fault = reader->fault();
  takeOver(*reader, source);
  outcome.replaced = true;
  return outcome;
}

/// Reads a text without a tree; null if the plain reader does not accept it or the rules refuse its root.
DocumentLoader::Reader DocumentLoader::readPlain(const Source& source, TextRules rules) const {
  auto reader = std::make_unique<RootReader>(m_document.header());
  bool rootIsRight = true;
  const bool isPlain = readPlainXml(source.text(), source.kind, [&](const ElementView& root) {
    rootIsRight = rules == TextRules::Lenient || root.tag() == words().gmd;
    if (rootIsRight) reader->readRoot(root);
  });
  if (!isPlain || !rootIsRight) reader.reset();
  return reader;
}

/// Reads any text; null, with the reason in `outcome`, if the rules refuse it.
DocumentLoader::Reader DocumentLoader::readAny(const Source& source, TextRules rules,
                                               LoadOutcome& outcome) const {
  auto reader = std::make_unique<RootReader>(m_document.header());
  bool rootIsRight = false;
  const XmlText text(source.text(), source.kind);
  const ParseOutcome parse = readXml(text, [&](const ElementView& root) {
    rootIsRight = root.tag() == words().gmd;
    if (rootIsRight || rules == TextRules::Lenient) reader->readRoot(root);
  });
  if (!parse.parsed) {
    outcome = failure(ztCAD_GMDDocument::NotParsed, parse.message);
    outcome.line = parse.line;
    outcome.column = parse.column;
    if (rules == TextRules::Strict) return nullptr;
    if (parse.isRefused) reader = std::make_unique<RootReader>(m_document.header());
  } else if (rules == TextRules::Strict && !rootIsRight) {
    outcome = failure(ztCAD_GMDDocument::NotADocument, QLatin1String("the root element is not \"GMD\""));
    return nullptr;
  }
  return reader;
}

/// Moves what was read into the document. Everything that can throw comes first, so the change is all or
/// nothing.
void DocumentLoader::takeOver(RootReader& reader, const Source& source) {
  auto text = std::make_unique<LoadedText>(source.bytes, source.kind);
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
