#include "document.h"

#include <QDebug>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>

#include "../../structure/child_reader.h"
#include "../../structure/read_structures.h"
#include "../../xml/byte_sink.h"
#include "../../xml/dom_backend.h"
#include "../../text/narrow_text.h"
#include "../vocabulary.h"
#include "../../xml/xml_parse.h"
#include "../../xml/xml_print.h"
#include "check.h"
#include "file.h"
#include "loaded_text.h"
#include "unification.h"

using ztcad::RootReader;
using ztcad::words;

namespace {

constexpr int indentOfFiles = 3;
constexpr int indentOfTexts = 1;

/// The order in which a file holds the kinds of elements.
template <typename Visit>
void visitInFileOrder(const ztCAD_DocumentContent& content, Visit&& visit) {
  visit(content.templatePoints);
  visit(content.points);
  visit(content.pointReferences);
  visit(content.templateLines);
  visit(content.lines);
  visit(content.lineReferences);
  visit(content.mipElements);
  visit(content.templateMipElements);
  visit(content.mipReferences);
  visit(content.spheres);
  visit(content.triangles);
  visit(content.templateTriangles);
  visit(content.triangleReferences);
  visit(content.details);
  visit(content.detailReferences);
  visit(content.structureReferences);
  visit(content.structures);
  visit(content.templateDetails);
  visit(content.templateStructures);
}

/// The order in which the text for people tells them; template solids and references to them are not told.
template <typename Visit>
void visitInTextOrder(const ztCAD_DocumentContent& content, Visit&& visit) {
  visit(content.points);
  visit(content.templatePoints);
  visit(content.pointReferences);
  visit(content.lines);
  visit(content.templateLines);
  visit(content.lineReferences);
  visit(content.mipElements);
  visit(content.templateMipElements);
  visit(content.mipReferences);
  visit(content.structures);
  visit(content.structureReferences);
  visit(content.templateStructures);
  visit(content.spheres);
  visit(content.triangles);
  visit(content.details);
  visit(content.detailReferences);
  visit(content.templateDetails);
}

void writeDocument(const ztCAD_HeaderNode& header, const ztCAD_DocumentContent& content,
                   ztcad::ByteOutput& output) {
  const ztcad::Windows1251Encoder encoder;
  ztcad::XmlWriter writer(output, encoder, indentOfFiles);
  writer.processingInstruction(words().xml, words().xmlDeclaration);
  ztcad::ByteSink sink(writer);
  sink.element(words().gmd, [&](ztcad::ElementSink& root) {
    header.write(root);
    visitInFileOrder(content, [&root](const auto& elements) {
      for (const auto& element : elements)
        element.write(root);
    });
  });
  writer.finish();
}

}  // namespace

/// Reads the children of the root into a content and a header of its own.
class ztcad::RootReader {
 public:
  explicit RootReader(const ztCAD_HeaderNode& header) : m_header(header) {}

  void readRoot(const ztcad::ElementView& root) {
    root.forEachChild([this](const ztcad::ElementView& child) { readChild(child); });
  }

  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_HeaderNode& header() const { return m_header; }
  bool fault() const { return m_fault; }

 private:
  void readChild(const ztcad::ElementView& child) {
    const QString tag = child.tag();
    if (tag == words().header) {
      readHeader(child);
      return;
    }
    ChildOutcome outcome = ztcad::readMember(m_content, child, tag, ChildOutcome::Skipped);
    if (outcome == ChildOutcome::Unknown) outcome = readTopLevel(child, tag);
    if (outcome == ChildOutcome::Failed) m_fault = true;
  }

  /// Structures, and the kinds that stand in documents only.
  ChildOutcome readTopLevel(const ztcad::ElementView& child, const QString& tag) {
    using ztcad::outcomeOf;
    using ztcad::readNew;
    if (tag == words().structure) return outcomeOf(readNew(m_content.structures, child));
    if (tag == words().templateStructure) return outcomeOf(readNew(m_content.templateStructures, child));
    if (tag == words().templateDetail) return outcomeOf(readNew(m_content.templateDetails, child));
    if (tag == words().templatePoint) return outcomeOf(readNew(m_content.templatePoints, child));
    if (tag == words().templateLine) return outcomeOf(readNew(m_content.templateLines, child));
    if (tag == words().templateElementMip) return outcomeOf(readNew(m_content.templateMipElements, child));
    if (tag == words().templateSolid) return outcomeOf(readNew(m_content.templateTriangles, child));
    return ChildOutcome::Unknown;
  }

  /// Forgets the faults of the children before it: the header's read begins by clearing the flag that it is
  /// given.
  void readHeader(const ztcad::ElementView& child) {
    ztCAD_HeaderNode header;
    if (header.read(child, m_fault)) m_header = header;
  }

  ztCAD_DocumentContent m_content;
  ztCAD_HeaderNode m_header;
  bool m_fault = false;
};

namespace {

/// Reads a text without a tree if it is of the plain kind. Nothing otherwise, or when its root is not `root` (null: any
/// root will do).
std::unique_ptr<RootReader> readPlain(const QByteArray& bytes, ztcad::XmlBytes kind, const QString* root,
                                      const ztCAD_HeaderNode& header) {
  auto reader = std::make_unique<RootReader>(header);
  const std::size_t structuresBefore = ztcad::readStructureCount();
  bool rootIsRight = true;
  const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  const bool isPlain = ztcad::readPlainXml(text, kind, [&](const ztcad::ElementView& element) {
    rootIsRight = !root || element.tag() == *root;
    if (rootIsRight) reader->readRoot(element);
  });
  if (isPlain && rootIsRight) return reader;
  reader.reset();
  ztcad::forgetReadStructuresSince(structuresBefore);
  return nullptr;
}

std::unique_ptr<RootReader> readTree(const QDomDocument& tree, const ztCAD_HeaderNode& header) {
  auto reader = std::make_unique<RootReader>(header);
  reader->readRoot(ztcad::DomView(tree.documentElement()));
  return reader;
}

}  // namespace

void ztCAD_DocumentContent::swap(ztCAD_DocumentContent& other) noexcept {
  structures.swap(other.structures);
  structureReferences.swap(other.structureReferences);
  templateStructures.swap(other.templateStructures);
  points.swap(other.points);
  lines.swap(other.lines);
  spheres.swap(other.spheres);
  triangles.swap(other.triangles);
  mipElements.swap(other.mipElements);
  details.swap(other.details);
  detailReferences.swap(other.detailReferences);
  templateDetails.swap(other.templateDetails);
  templatePoints.swap(other.templatePoints);
  pointReferences.swap(other.pointReferences);
  templateLines.swap(other.templateLines);
  lineReferences.swap(other.lineReferences);
  templateMipElements.swap(other.templateMipElements);
  mipReferences.swap(other.mipReferences);
  templateTriangles.swap(other.templateTriangles);
  triangleReferences.swap(other.triangleReferences);
}

ztCAD_GMDDocument::ztCAD_GMDDocument(const std::string& inform)
    : m_loaded(std::make_unique<ztcad::LoadedText>()), m_header(ztcad::fromNarrow(inform)) {}

ztCAD_GMDDocument::~ztCAD_GMDDocument() { ztcad::clearReadStructures(); }

void ztCAD_GMDDocument::saveToFile(const std::string& fileName) {
  ztcad::unifyNames(m_content);
  ztcad::writeTextFile(ztcad::fileNameFromNarrow(fileName),
                       [this](ztcad::ByteOutput& output) { writeDocument(m_header, m_content, output); });
}

bool ztCAD_GMDDocument::loadFromFile(const std::string& fileName, std::int32_t& resultCode, bool& fault) {
  fault = false;
  const QString name = ztcad::fileNameFromNarrow(fileName);
  resultCode = FileMissing;
  if (!QFile::exists(name)) return false;

  if (QFileInfo(name).size() > static_cast<qint64>(ztcad::longestXml)) {
    resultCode = NotParsed;
    qDebug().noquote() << "Error on parsing file";
    return false;
  }
  QByteArray bytes;
  resultCode = ztcad::readFile(name, bytes);
  if (resultCode != 0) {
    qDebug().noquote().nospace() << "Error on opening file " << name;
    return false;
  }
  constexpr auto kind = ztcad::XmlBytes::AsDeclared;
  auto reader = readPlain(bytes, kind, &words().gmd, m_header);
  if (!reader) {
    QDomDocument tree;
    resultCode = NotParsed;
    if (!ztcad::parseXml(bytes, tree).parsed) {
      qDebug().noquote() << "Error on parsing file";
      return false;
    }
    resultCode = NotADocument;
    if (tree.documentElement().tagName() != words().gmd) {
      qDebug().noquote() << "Error on scanning ztCAD_GMD-file";
      return false;
    }
    reader = readTree(tree, m_header);
  }
  ztcad::unifyNames(reader->content());
  const std::int32_t code = ztcad::passesCheck(reader->content()) ? Loaded : NotADocument;
  takeOver(*reader, std::make_unique<ztcad::LoadedText>(bytes, kind));
  fault = reader->fault();
  resultCode = code;
  return true;
}

std::string ztCAD_GMDDocument::loadFromString(const std::string& xml, bool& parsed, int& line, int& column) {
  ztcad::ParseOutcome outcome{false, QLatin1String("text too long"), 0, 0};
  // text where it is UTF-8, else bytes in the encoding that they declare
  const auto kind = ztcad::isUtf8(xml) ? ztcad::XmlBytes::Utf8 : ztcad::XmlBytes::AsDeclared;
  const bool isTooLong = xml.size() > ztcad::longestXml;
  const QByteArray bytes = isTooLong ? QByteArray() : QByteArray(xml.data(), static_cast<int>(xml.size()));
  auto reader = readPlain(bytes, kind, nullptr, m_header);
  if (reader) {
    outcome = {true, QString(), 0, 0};
  } else {
    QDomDocument tree;
    if (!isTooLong) outcome = ztcad::parseBytes(bytes, kind, tree);
    reader = readTree(tree, m_header);
  }
  std::string message = ztcad::toNarrow(outcome.message);
  line = outcome.line;
  column = outcome.column;
  ztcad::unifyNames(reader->content());
  takeOver(*reader, std::make_unique<ztcad::LoadedText>(bytes, kind));
  parsed = outcome.parsed;  // last: nothing is well when what follows the parse fails
  return message;
}

// Nothing here fails: the document changes as a whole or not at all.
void ztCAD_GMDDocument::takeOver(ztcad::RootReader& reader,
                                 std::unique_ptr<ztcad::LoadedText> text) noexcept {
  m_content.swap(reader.content());
  m_header = reader.header();
  m_loaded = std::move(text);
}

QString& ztCAD_GMDDocument::toText(QString& out, bool /*debugForm*/) const {
  out += words().documentText + m_header.toText() + QLatin1Char('\n');
  visitInTextOrder(m_content, [&out](const auto& elements) {
    for (const auto& element : elements)
      element.toText(out, true) += QLatin1Char('\n');
  });
  return out;
}

std::string ztCAD_GMDDocument::xmlText() const {
  return ztcad::printXml(m_loaded->tree(), indentOfTexts) +
         " header state=" + ztcad::toNarrow(m_header.toText());
}
