#pragma once

#include <optional>
#include <string_view>

#include "xml_cursor.h"

namespace ztcad {

/// The external identifier of a document type or notation.
struct XmlExternalId {
  std::optional<std::string_view> publicId;
  std::optional<std::string_view> systemId;
};

/// Reads document type declarations piece by piece. They have no meaning for the content; what is reported is
/// what a printed text keeps.
class DocumentTypeReader {
 public:
  enum class Part { Notation, Instruction, Comment, End };

  explicit DocumentTypeReader(XmlCursor& cursor) : m_cursor(cursor) {}

  /// Reads from the "D" of "DOCTYPE" to the "[" of the internal subset, or to the end of a declaration
  /// without one.
  void readStart();
  /// Reads to the next part that is reported, or to the end of the declaration.
  Part next();

  // What was read last.
  std::string_view name() const { return m_name; }  ///< of the document type or notation
  const XmlExternalId& externalId() const { return m_externalId; }
  const XmlInstruction& instruction() const { return m_instruction; }
  std::string_view comment() const { return m_comment; }

 private:
  enum class IdKind { External, ExternalOrPublic };

  std::optional<Part> readDeclaration();
  std::optional<Part> readMarkup();
  void readParameterReference();
  void readExternalId(IdKind kind);
  std::string_view readPublicLiteral();
  std::string_view readLiteral();

  void readElement();
  void readMixedContent();
  void readChildren();
  void readChild(int& depth);
  bool readAfterChild(int& depth);

  void readAttributeList();
  void readAttributeType();
  void readTokenOrNotationType();
  void readAlternatives(std::string_view (XmlCursor::*readOne)());
  void readDefault();

  std::optional<Part> readNotation();
  void readNotationEnd();

  void readWhitespace(const char* messageIfMissing);
  void readEnd();
  bool skip(char expected);

  XmlCursor& m_cursor;
  bool m_isInSubset = false;
  bool m_isInNotation = false;  // reported, but not read to its end
  std::string_view m_name;
  XmlExternalId m_externalId;
  XmlInstruction m_instruction;
  std::string_view m_comment;
};

}  // namespace ztcad
