#pragma once

#include "element_sink.h"
#include "xml_writer.h"

namespace ztcad {

/// The sink backend that writes the bytes of a file; builds no tree.
class ByteSink : public ElementSink {
 public:
  explicit ByteSink(XmlWriter& writer) : m_writer(writer) {}

  void attribute(const QString& name, const QString& value) override { m_writer.attribute(name, value); }
  void shortAttribute(const QString& name, const ztCAD_ShortText& value) override {
    if (value.isShort() && XmlWriter::isPlainValue(value.bytes()))
      m_writer.plainAttribute(name, value.bytes());
    else
      attribute(name, value.toString());
  }
  void plainAttribute(const QString& name, std::string_view ascii) override {
    m_writer.plainAttribute(name, ascii);
  }
  void text(std::string_view ascii) override { m_writer.plainText(ascii); }

 protected:
  void open(const QString& tag) override { m_writer.startElement(tag); }
  void close() override { m_writer.endElement(); }

 private:
  XmlWriter& m_writer;
};

}  // namespace ztcad
