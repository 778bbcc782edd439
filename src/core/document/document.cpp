#include "document.h"

#include <QtGlobal>

#include "../../structure/read_structures.h"
#include "../../support/qt_thread.h"
#include "../../text/narrow_text.h"
#include "../../xml/byte_sink.h"
#include "../../xml/xml_print.h"
#include "../vocabulary.h"
#include "loaded_text.h"
#include "loading.h"
#include "orders.h"
#include "saving.h"
#include "unification.h"

using ztcad::words;

namespace {

constexpr int indentOfFiles = 3;
constexpr int indentOfTexts = 1;

void writeDocument(const ztCAD_HeaderNode& header, const ztCAD_DocumentContent& content,
                   ztcad::ByteOutput& output) {
  const ztcad::Windows1251Encoder encoder;
  ztcad::XmlWriter writer(output, encoder, indentOfFiles);
  writer.processingInstruction(words().xml, words().xmlDeclaration);
  ztcad::ByteSink sink(writer);
  sink.element(words().gmd, [&](ztcad::ElementSink& root) {
    header.write(root);
    visitInOrder(ztcad::DocumentFileOrder(), content, [&root](const auto& elements) {
      for (const auto& element : elements)
        element.write(root);
    });
  });
  writer.finish();
}

}  // namespace

void ztCAD_DocumentContent::swap(ztCAD_DocumentContent& other) noexcept {
  ztcad::visitKinds<ztCAD_DocumentContent>(
      [&](auto kind) { decltype(kind)::in(*this).swap(decltype(kind)::in(other)); });
}

ztCAD_GMDDocument::ztCAD_GMDDocument(const std::string& inform)
    : m_loaded(std::make_unique<ztcad::LoadedText>()), m_header(ztcad::fromNarrow(inform)) {}

ztCAD_GMDDocument::~ztCAD_GMDDocument() {
  if (m_endsSharedStructures) ztcad::clearReadStructures();
}

void ztCAD_GMDDocument::saveToFile(const std::string& fileName) { ztcad::saveDocument(*this, fileName); }

bool ztCAD_GMDDocument::loadFromFile(const std::string& fileName, std::int32_t& resultCode, bool& fault) {
  fault = false;
  const QString name = ztcad::fileNameFromNarrow(fileName);
  const ztcad::LoadOutcome outcome =
      ztcad::DocumentLoader(*this, ztcad::NestedOwner::Everyone).loadFile(name);
  resultCode = outcome.code;
  fault = outcome.fault;
  if (outcome.replaced || outcome.code == FileMissing) return outcome.replaced;
  ztcad::makeQtThreadData();
  // not as a stream, whose destructor prints: it would end the process if memory runs out there
  if (outcome.code == NotParsed)
    qDebug("Error on parsing file");
  else if (outcome.code == NotADocument)
    qDebug("Error on scanning ztCAD_GMD-file");
  else
    qDebug("Error on opening file %s", qUtf8Printable(name));
  return false;
}

std::string ztCAD_GMDDocument::loadFromString(const std::string& xml, bool& parsed, int& line, int& column) {
  ztcad::DocumentLoader loader(*this, ztcad::NestedOwner::Everyone);
  const ztcad::LoadOutcome outcome = loader.loadText(xml, ztcad::TextRules::Lenient);
  const bool isWellFormed = outcome.code != NotParsed;
  std::string message = isWellFormed ? std::string() : ztcad::toNarrow(outcome.message);
  line = outcome.line;
  column = outcome.column;
  parsed = isWellFormed;  // last: the caller's failure value stays if anything before throws
  return message;
}

ztcad::FileError ztcad::saveDocument(ztCAD_GMDDocument& document, const std::string& fileName) {
  unifyNames(document.content());
  return writeTextFile(fileNameFromNarrow(fileName), [&document](ByteOutput& output) {
    writeDocument(document.header(), document.content(), output);
  });
}

QString& ztCAD_GMDDocument::toText(QString& out, bool /*debugForm*/) const {
  out += words().documentText + m_header.toText() + QLatin1Char('\n');
  visitInOrder(ztcad::DocumentTextOrder(), m_content, [&out](const auto& elements) {
    for (const auto& element : elements)
      element.toText(out, true) += QLatin1Char('\n');
  });
  return out;
}

std::string ztCAD_GMDDocument::xmlText() const {
  return ztcad::printXml(m_loaded->tree(), indentOfTexts) +
         " header state=" + ztcad::toNarrow(m_header.toText());
}
