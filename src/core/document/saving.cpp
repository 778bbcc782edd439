#include "saving.h"

#include "../../number/floating_point.h"
#include "../../structure/structure_pass.h"
#include "../../text/text_limits.h"
#include "../../xml/byte_sink.h"
#include "../../xml/xml_outcome.h"
#include "../elements_ahead.h"
#include "../vocabulary.h"
#include "orders.h"
#include "unification.h"

namespace ztcad {

namespace {

constexpr int indentOfFiles = 3;

constexpr char tooLong[] = "the text is too long to be loaded again";

/// Refuses elements that are nested deeper than a load accepts, and texts that are longer.
class FileSink final : public ByteSink {
 public:
  using ByteSink::ByteSink;

  void attribute(const QString& name, const QString& value) override {
    if (static_cast<std::size_t>(value.size()) > limits.text) throw TextRefused(tooLong);
    ByteSink::attribute(name, value);
  }

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

/// Refuses a few structures that are held in so many places that writing them would not end.
void requireFewStructures(const ztCAD_DocumentContent& content) {
  StructureCount count;
  for (const ztCAD_commonStructure& structure : content.structures)
    count.add(structure);
  for (const ztCAD_commonStructure& structure : content.templateStructures)
    count.add(structure);
  if (count.count() > limits.structures) throw TextRefused(tooLong);
}

void writeDocument(const ztCAD_HeaderNode& header, const ztCAD_DocumentContent& content, ByteOutput& output) {
  requireFewStructures(content);
  const Windows1251Encoder encoder;
  XmlWriter writer(output, encoder, indentOfFiles);
  writer.processingInstruction(words().xml, words().xmlDeclaration);
  FileSink sink(writer);
  sink.element(words().gmd, [&](ElementSink& root) {
    header.write(root);
    visitInOrder(DocumentFileOrder(), content, [&root](const auto& elements) {
      for (const auto& element : elements) {
        prefetchElementAfter(element);
        element.write(root);
      }
    });
  });
  writer.finish();
}

/// @throw TextRefused
void writeDocument(const ztCAD_GMDDocument& document, ByteOutput& output) {
  try {
    writeDocument(document.header(), document.content(), output);
  } catch (const TooLong&) {  // a list
    throw TextRefused(tooLong);
  }
}

}  // namespace

FileError saveDocument(ztCAD_GMDDocument& document, std::string_view fileName) {
  const DefaultFloatingPoint environment;
  unifyNames(document.content());
  return writeTextFile(fileNameOf(fileName), longestFile,
                       [&document](ByteOutput& output) { writeDocument(document, output); });
}

FileError saveDocument(ztCAD_GMDDocument& document, ByteOutput& output) {
  const DefaultFloatingPoint environment;
  unifyNames(document.content());
  return writeText(output, longestFile, [&document](ByteOutput& text) { writeDocument(document, text); });
}

}  // namespace ztcad
