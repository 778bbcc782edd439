#pragma once

#include <map>
#include <string>
#include <string_view>

#include "xml/reference.h"
#include "xml/xml_reader.h"
#include "xml/xml_text.h"

namespace xml_tree {

/// What the reader makes of a text, in a form for comparing builds: no part of it comes from Qt.
class DescribedXml {
 public:
  /// @param text of any encoding
  DescribedXml(std::string_view text, ztcad::XmlBytes kind) {
    const ztcad::XmlText decoded(text, kind);
    if (decoded.refusal()) {
      m_outcome = *decoded.refusal();
    } else {
      read(decoded.characters());
    }
  }
  /// @param characters as the reader takes them
  explicit DescribedXml(std::string_view characters) { read(characters); }

  const ztcad::ParseOutcome& outcome() const { return m_outcome; }
  /// The content; of an ill-formed text what comes before the error, of a refused one nothing.
  std::string content() const { return m_outcome.isRefused ? std::string() : m_content; }

 private:
  void read(std::string_view characters) {
    ztcad::XmlReader reader(characters);
    for (ztcad::XmlEvent event = reader.next(); event != ztcad::XmlEvent::End; event = reader.next()) {
      m_content += static_cast<char>('A' + static_cast<int>(event));
      add(event, reader);
    }
    m_outcome = reader.outcome();
  }

  void add(ztcad::XmlEvent event, const ztcad::XmlReader& reader) {
    using ztcad::XmlEvent;
    switch (event) {
      case XmlEvent::DocumentType:
      case XmlEvent::Notation:
        addField(reader.name());
        addField(reader.externalId().publicId.value_or("none"));
        addField(reader.externalId().systemId.value_or("none"));
        break;
      case XmlEvent::Instruction:
        addField(reader.name());
        addField(reader.text());
        break;
      case XmlEvent::StartElement:
        addField(reader.name());
        addAttributes(reader);
        break;
      case XmlEvent::Text:
        addWithoutReferences(reader.text());
        break;
      case XmlEvent::Comment:
      case XmlEvent::Cdata:
        addField(reader.text());
        break;
      case XmlEvent::EntityReference:
        addField(reader.name());
        break;
      case XmlEvent::EndElement:
      case XmlEvent::End:
        break;
    }
  }

  /// In the order of their names; the last value of each name counts.
  void addAttributes(const ztcad::XmlReader& reader) {
    std::map<std::string_view, std::string_view> values;
    for (std::size_t i = reader.firstAttribute(); i < reader.attributes().size(); ++i)
      values[reader.attributes()[i].name] = reader.attributes()[i].value;
    for (const auto& [name, value] : values) {
      addField(name);
      addWithoutReferences(value);
    }
  }

  void addWithoutReferences(std::string_view text) {
    std::string replaced;
    ztcad::appendWithoutReferences(text, replaced);
    addField(replaced);
  }

  void addField(std::string_view field) { (m_content += std::to_string(field.size()) + ':') += field; }

  ztcad::ParseOutcome m_outcome;
  std::string m_content;
};

}  // namespace xml_tree
