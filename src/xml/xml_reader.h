#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document_type_reader.h"
#include "xml_cursor.h"
#include "xml_declaration.h"
#include "xml_outcome.h"

namespace ztcad {

enum class XmlEvent {
  DocumentType,  ///< name, external identifier
  Notation,      ///< name, external identifier
  Instruction,   ///< name, text; the XML declaration is reported as one, in a normal form
  Comment,       ///< text
  StartElement,  ///< name, attributes
  EndElement,
  Text,             ///< text, which may hold references; never whitespace alone
  Cdata,            ///< text
  EntityReference,  ///< name; of an entity that is not predefined
  End,              ///< of the text, or of what comes before an error
};

/// Reads an XML text event by event, in one pass and in linear time, and decides whether it is well-formed.
///
/// Accepted and refused texts, messages, positions and the events before an error are those of
/// `QDomDocument::setContent` of Qt 5.15, with whichever Qt the library is built. In addition these are
/// refused, at the first position where they occur:
///
/// - elements nested deeper than `maximalDepth`, and parentheses nested deeper than that in a document type
///   declaration
/// - the declaration of an entity of any kind: before anything is expanded
/// - a NUL character
///
/// Text that is ill-formed before such a position keeps its message. A numeric reference beyond U+FFFF is
/// read as its character (Qt truncates it to 16 bits).
class XmlReader {
 public:
  /// @param text UTF-8 without a byte order mark, in which surrogates may stand alone; must stay valid
  explicit XmlReader(std::string_view text);

  /// The next event. After the last one always `End`.
  XmlEvent next();

  // What belongs to the last event. Valid until the next one.
  std::string_view name() const { return m_name; }
  std::string_view text() const { return m_text; }
  bool hasReferences() const { return m_hasReferences; }
  /// Whether an `Instruction` is the XML declaration.
  bool isDeclaration() const { return m_name.data() == m_declaration.target.data() && !m_name.empty(); }
  const XmlExternalId& externalId() const { return m_documentType.externalId(); }

  /// The attributes of all open elements, those of the innermost one from `firstAttribute` on.
  const std::vector<XmlAttribute>& attributes() const { return m_attributes; }
  std::size_t firstAttribute() const { return m_open.empty() ? 0 : m_open.back().firstAttribute; }

  /// The result, once `End` was returned.
  ParseOutcome outcome() const;

  /// The first byte that was not read yet.
  const char* position() const { return m_cursor.position(); }
  std::string_view wholeText() const { return m_whole; }
  /// End of the memory that may be read.
  const char* endOfText() const { return m_cursor.endOfText(); }

 private:
  enum class Place { Prolog, DocumentType, Content, AfterRoot, End };

  struct OpenElement {
    std::string_view tag;
    std::size_t firstAttribute;
  };

  XmlEvent readNext();
  XmlEvent readProlog();
  XmlEvent readDocumentType();
  XmlEvent readContent();
  XmlEvent readAfterRoot();

  std::optional<XmlEvent> readRun();
  std::optional<XmlEvent> endRun(const char* first, const char* last);
  void readCharacters();
  XmlEvent readMarkup();
  XmlEvent readStartTag();
  XmlEvent readEmptyElementEnd();
  XmlEvent readEndTag();
  XmlEvent endElement();
  XmlEvent readComment();
  XmlEvent readInstruction();
  XmlEvent readFirstInstruction();
  XmlEvent report(const XmlInstruction& instruction);

  const std::string_view m_whole;
  const std::size_t m_nul;  // offset of the first NUL; npos without one
  XmlCursor m_cursor;
  DocumentTypeReader m_documentType;
  Place m_place = Place::Prolog;
  std::vector<OpenElement> m_open;
  std::vector<XmlAttribute> m_attributes;
  std::string_view m_name;
  std::string_view m_text;
  XmlDeclaration m_declaration;
  std::optional<std::string_view> m_entity;  // a reference to report after the text before it
  const char* m_nextTag = nullptr;           // the "<" that was looked up last
  bool m_hasReferences = false;
  bool m_mayDeclare = true;         // nothing was read: an XML declaration may follow
  bool m_isInEmptyElement = false;  // the "/" of its tag was read
  bool m_countsBracket = true;      // whether a "]" at the position counts for "]]>"
  std::optional<XmlError> m_error;
};

}  // namespace ztcad
