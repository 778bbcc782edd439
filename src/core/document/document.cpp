#include "document.h"

#include <QtGlobal>

#include "../../number/floating_point.h"
#include "../../structure/read_structures.h"
#include "../../support/qt_thread.h"
#include "../../text/narrow_text.h"
#include "../vocabulary.h"
#include "live_documents.h"
#include "loaded_text.h"
#include "loading.h"
#include "orders.h"
#include "saving.h"

using ztcad::words;

namespace {

constexpr int indentOfTexts = 1;

}  // namespace

void ztCAD_DocumentContent::swap(ztCAD_DocumentContent& other) noexcept {
  ztcad::visitKinds<ztCAD_DocumentContent>(
      [&](auto kind) { decltype(kind)::in(*this).swap(decltype(kind)::in(other)); });
}

ztCAD_GMDDocument::ztCAD_GMDDocument(const std::string& inform)
    : m_loaded(std::make_unique<ztcad::LoadedText>()), m_header(ztcad::fromNarrow(inform)) {
  ztcad::addLiveDocument(*this);
}

ztCAD_GMDDocument::~ztCAD_GMDDocument() {
  ztcad::removeLiveDocument(*this);
  if (m_endsSharedStructures) ztcad::clearReadStructures();
}

void ztCAD_GMDDocument::saveToFile(const std::string& fileName) { ztcad::saveDocument(*this, fileName); }

bool ztCAD_GMDDocument::loadFromFile(const std::string& fileName, std::int32_t& resultCode, bool& fault) {
  fault = false;
  const ztcad::LoadOutcome outcome =
      ztcad::DocumentLoader(*this, ztcad::NestedOwner::Everyone).loadFile(fileName);
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
    qDebug("Error on opening file %s", qUtf8Printable(ztcad::fileNameFromNarrow(fileName)));
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

QString& ztCAD_GMDDocument::toText(QString& out, bool /*debugForm*/) const {
  const ztcad::DefaultFloatingPoint environment;
  out += words().documentText + m_header.toText() + QLatin1Char('\n');
  visitInOrder(ztcad::DocumentTextOrder(), m_content, [&out](const auto& elements) {
    for (const auto& element : elements)
      element.toText(out, true) += QLatin1Char('\n');
  });
  return out;
}

std::string ztCAD_GMDDocument::xmlText() const {
  return m_loaded->printed(indentOfTexts) + " header state=" + ztcad::toNarrow(m_header.toText());
}
