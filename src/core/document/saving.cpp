#include "saving.h"

#include "../../xml/byte_sink.h"
#include "../../xml/plain_xml.h"
#include "../vocabulary.h"
#include "orders.h"
#include "unification.h"

namespace ztcad {

namespace {

constexpr int indentOfFiles = 3;

void writeDocument(const ztCAD_HeaderNode& header, const ztCAD_DocumentContent& content, ByteOutput& output) {
  const Windows1251Encoder encoder;
  XmlWriter writer(output, encoder, indentOfFiles);
  writer.processingInstruction(words().xml, words().xmlDeclaration);
  ByteSink sink(writer);
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
  unifyNames(document.content());
  return writeTextFile(fileNameOf(fileName), longestXml, [&document](ByteOutput& output) {
    writeDocument(document.header(), document.content(), output);
  });
}

}  // namespace ztcad
