#include "xml_declaration.h"

#include <algorithm>
#include <optional>

#include "reference.h"

namespace ztcad {

using namespace xml_messages;

namespace {

class DeclarationReader {
 public:
  explicit DeclarationReader(XmlCursor& cursor) : m_cursor(cursor) {}

  XmlDeclaration read() {
    if (!m_cursor.isAtWhitespace()) {
      m_cursor.peek();
      m_cursor.fail(unexpectedCharacter);
    }
    m_cursor.skipWhitespace();
    readVersion();
    if (hasNext()) readEncodingOrStandalone();
    if (hasNext()) readLastStandalone();
    m_cursor.skipWhitespace();
    for (const char expected : {'?', '>'}) {
      if (m_cursor.peek() != expected) m_cursor.fail(unexpectedCharacter);
      m_cursor.advance();
    }
    return result();
  }

 private:
  void readVersion() {
    readAttribute();
    if (m_last.target != "version") m_cursor.fail(version);
    m_version = m_last.data;
  }

  void readEncodingOrStandalone() {
    readAttribute();
    if (m_last.target == "standalone") {
      takeStandalone();
    } else if (m_last.target == "encoding") {
      m_encoding = m_last.data;
    } else {
      m_cursor.fail(encodingOrStandalone);
    }
  }

  void readLastStandalone() {
    if (m_standalone) m_cursor.fail(unexpectedCharacter);
    readAttribute();
    if (m_last.target != "standalone") m_cursor.fail(standalone);
    takeStandalone();
  }

  void takeStandalone() {
    if (m_last.data != "yes" && m_last.data != "no") m_cursor.fail(standaloneValue);
    m_standalone = m_last.data;
  }

  /// Whether another attribute follows, after whitespace.
  bool hasNext() {
    if (!m_cursor.isAtWhitespace()) return false;
    m_cursor.skipWhitespace();
    return m_cursor.isAtName();
  }

  void readAttribute() {
    if (!m_cursor.isAtName()) m_cursor.fail(unexpectedCharacter);
    const XmlAttribute attribute = m_cursor.readAttribute();
    m_last = {std::string(attribute.name), {}};
    appendWithoutReferences(attribute.value, m_last.data);
  }

  XmlDeclaration result() const {
    if (m_version.empty()) return m_last;
    XmlDeclaration declaration{"xml", "version='" + m_version + '\''};
    if (!m_encoding.empty()) declaration.data += " encoding='" + m_encoding + '\'';
    if (m_standalone) declaration.data += " standalone='" + *m_standalone + '\'';
    return declaration;
  }

  XmlCursor& m_cursor;
  XmlDeclaration m_last;  // the attribute read last
  std::string m_version;
  std::string m_encoding;
  std::optional<std::string> m_standalone;
};

}  // namespace

std::string encodingIn(std::string_view data) {
  constexpr std::string_view word = "encoding";
  const auto skipWhitespace = [](std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  };
  for (std::size_t at = data.find(word); at != std::string_view::npos; at = data.find(word, at + 1)) {
    std::string_view rest = skipWhitespace(data.substr(at + word.size()));
    if (rest.substr(0, 1) != "=") continue;
    rest = skipWhitespace(rest.substr(1));
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) continue;
    const std::size_t end = rest.find(rest.front(), 1);
    if (end != std::string_view::npos) return std::string(rest.substr(1, end - 1));
  }
  return {};
}

XmlDeclaration readXmlDeclaration(XmlCursor& cursor) { return DeclarationReader(cursor).read(); }

}  // namespace ztcad
