#include "saving.h"

#include "../../number/floating_point.h"
#include "../../xml/byte_sink.h"
#include "../../xml/plain_xml.h"
#include "../../xml/xml_outcome.h"
#include "../vocabulary.h"
#include "orders.h"
#include "unification.h"

namespace ztcad {

namespace {

constexpr int indentOfFiles = 3;

/// Refuses elements that are nested deeper than a load accepts.
class FileSink final : public ByteSink {
 public:
  using ByteSink::ByteSink;

 private:
  void open(const QString& tag) override {
    if (++m_depth > maximalDepth)
      throw TextRefused("elements nested deeper than 256 would not be loaded again");
    ByteSink::open(tag);
  }
  void close() override {
    --m_depth;
    ByteSink::close();
  }

  int m_depth = 0;
};

void writeDocument(const ztCAD_HeaderNode& header, const ztCAD_DocumentContent& content, ByteOutput& output) {
  const Windows1251Encoder encoder;
  XmlWriter writer(output, encoder, indentOfFiles);
  writer.processingInstruction(words().xml, words().xmlDeclaration);
  FileSink sink(writer);
  sink.element(words().gmd, [&](ElementSink& root) {
    header.write(root);
    visitInOrder(DocumentFileOrder(), content, [&root](const auto& elements) {
      for (const auto& element : elements)
        element.write(root);
    });
  });
  writer.finish();
}

}  // namespace

FileError saveDocument(ztCAD_GMDDocument& document, std::string_view fileName) {
  const DefaultFloatingPoint environment;
  unifyNames(document.content());
  return writeTextFile(fileNameOf(fileName), longestXml, [&document](ByteOutput& output) {
    writeDocument(document.header(), document.content(), output);
  });
}

FileError saveDocument(ztCAD_GMDDocument& document, ByteOutput& output) {
  const DefaultFloatingPoint environment;
  unifyNames(document.content());
  return writeText(output, longestXml, [&document](ByteOutput& text) {
    writeDocument(document.header(), document.content(), text);
  });
}

}  // namespace ztcad
