#include "document.h"

#include <QDebug>
#include <QDomDocument>
#include <QFile>

#include "../../structure/read_structures.h"
#include "../byte_sink.h"
#include "../dom_carrier.h"
#include "../narrow_text.h"
#include "../vocabulary.h"
#include "../xml_parse.h"
#include "../xml_print.h"
#include "check.h"
#include "file.h"
#include "unification.h"

using ztcad::words;

namespace {

constexpr int indentOfFiles = 3;
constexpr int indentOfTexts = 1;

/// The order in which a file holds the kinds of elements.
template <typename Visit>
void visitInFileOrder(const ztCAD_DocumentContent& content, Visit&& visit) {
  visit(content.templatePoints);
  visit(content.points);
}

/// The order in which the text for people tells them.
template <typename Visit>
void visitInTextOrder(const ztCAD_DocumentContent& content, Visit&& visit) {
  visit(content.points);
  visit(content.templatePoints);
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

/// Reads the children of the root into a content and a header of its own.
class RootReader {
 public:
  explicit RootReader(const ztCAD_HeaderNode& header) : m_header(header) {}

  void readChild(const ztcad::ElementView& child) {
    const QString tag = child.tag();
    if (tag == words().point) {
      append(m_content.points, child);
    } else if (tag == words().templatePoint) {
      append(m_content.templatePoints, child);
    } else if (tag == words().header) {
      readHeader(child);
    }
  }

  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_HeaderNode& header() const { return m_header; }
  bool fault() const { return m_fault; }

 private:
  /// What does not read stays all the same, with all that could be read.
  template <typename Container>
  void append(Container& elements, const ztcad::ElementView& child) {
    bool ownFault = false;
    if (!elements.appendNew().read(child, ownFault)) m_fault = true;
  }

  /// Forgets the faults of the children before it: the header's read begins by clearing the flag that it is given.
  void readHeader(const ztcad::ElementView& child) {
    ztCAD_HeaderNode header;
    if (header.read(child, m_fault)) m_header = header;
  }

  ztCAD_DocumentContent m_content;
  ztCAD_HeaderNode m_header;
  bool m_fault = false;
};

}  // namespace

void ztCAD_DocumentContent::swap(ztCAD_DocumentContent& other) noexcept {
  points.swap(other.points);
  templatePoints.swap(other.templatePoints);
}

ztCAD_GMDDocument::ztCAD_GMDDocument(const std::string& inform)
    : m_tree(std::make_unique<QDomDocument>()), m_header(ztcad::fromNarrow(inform)) {}

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

  QByteArray bytes;
  resultCode = ztcad::readFile(name, bytes);
  if (resultCode != 0) {
    qDebug().noquote().nospace() << "Error on opening file " << name;
    return false;
  }
  auto tree = std::make_unique<QDomDocument>();
  resultCode = NotParsed;
  if (!ztcad::parseXml(bytes, *tree).parsed) {
    qDebug().noquote() << "Error on parsing file";
    return false;
  }
  resultCode = NotADocument;
  if (tree->documentElement().tagName() != words().gmd) {
    qDebug().noquote() << "Error on scanning ztCAD_GMD-file";
    return false;
  }
  readContent(*tree, fault);
  m_tree = std::move(tree);
  const bool unified = ztcad::unifyNames(m_content);
  if (ztcad::passesCheck(m_content) && unified) resultCode = Loaded;
  return true;
}

std::string ztCAD_GMDDocument::loadFromString(const std::string& xml, bool& parsed, int& line, int& column) {
  auto tree = std::make_unique<QDomDocument>();
  const auto size = static_cast<int>(xml.size());
  const ztcad::ParseOutcome outcome = ztcad::isUtf8(xml)
                                          ? ztcad::parseXml(QString::fromUtf8(xml.data(), size), *tree)
                                          : ztcad::parseXml(QByteArray::fromRawData(xml.data(), size), *tree);
  line = outcome.line;
  column = outcome.column;
  bool fault = false;
  readContent(*tree, fault);
  m_tree = std::move(tree);
  ztcad::unifyNames(m_content);
  parsed = outcome.parsed;  // last: nothing is well when what follows the parse fails
  return ztcad::toNarrow(outcome.message);
}

void ztCAD_GMDDocument::readContent(const QDomDocument& tree, bool& fault) {
  RootReader reader(m_header);
  const ztcad::DomView root(tree.documentElement());
  root.forEachChild([&reader](const ztcad::ElementView& child) { reader.readChild(child); });
  m_content.swap(reader.content());
  m_header = reader.header();
  fault = reader.fault();
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
  return ztcad::printXml(*m_tree, indentOfTexts) + " header state=" + ztcad::toNarrow(m_header.toText());
}
