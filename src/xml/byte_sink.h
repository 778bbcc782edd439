#pragma once

#include "element_sink.h"
#include "xml_writer.h"

namespace ztcad {

/// The sink backend that writes the bytes of a file; builds no tree.
class ByteSink final : public ElementSink {
 public:
  explicit ByteSink(XmlWriter& writer) : m_writer(writer) {}

  void attribute(const QString& name, const QString& value) override { m_writer.attribute(name, value); }
  void text(std::string_view ascii) override { m_writer.plainText(ascii); }

 private:
  void open(const QString& tag) override { m_writer.startElement(tag); }
  void close() override { m_writer.endElement(); }

  XmlWriter& m_writer;
};

}  // namespace ztcad
