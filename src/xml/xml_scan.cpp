#include "xml_scan.h"

#include "../text/append_character.h"
#include "xml_parse.h"

namespace ztcad {

namespace {

/// Index after the next `closing`; the end of the text without one.
int indexAfter(QLatin1String closing, const QString& text, int from) {
  const int found = text.indexOf(closing, from);
  return found < 0 ? text.size() : found + closing.size();
}

bool startsAt(const QString& text, int at, QLatin1String word) {
  return text.midRef(at, word.size()) == word;
}

/// Index after the comment, CDATA section or processing instruction that starts at `at`; `at` if none starts
/// there.
int endOfOpaque(const QString& text, int at) {
  if (startsAt(text, at, QLatin1String("<!--"))) return indexAfter(QLatin1String("-->"), text, at + 4);
  if (startsAt(text, at, QLatin1String("<![CDATA["))) return indexAfter(QLatin1String("]]>"), text, at + 9);
  if (startsAt(text, at, QLatin1String("<?"))) return indexAfter(QLatin1String("?>"), text, at + 2);
  return at;
}

/// Scans a document type declaration. After an error in it the result is meaningless, which does no harm: the
/// parser stops at the error.
class DocumentTypeScan {
 public:
  /// @param start index of the `<!DOCTYPE`
  DocumentTypeScan(const QString& text, int start) : m_text(text), m_at(start + 9) {
    while (m_at < text.size() && !m_isComplete)
      step();
  }

  /// Index after the declaration.
  int end() const { return m_at; }
  const std::optional<Obstacle>& obstacle() const { return m_obstacle; }

 private:
  void step() {
    const int next = endOfOpaque(m_text, m_at);
    if (next == m_at) {
      takeCharacter(m_text.at(m_at).unicode());
    } else {
      m_at = next;
    }
  }

  void takeCharacter(ushort character) {
    int next = m_at + 1;
    switch (character) {
      case '"':
        next = indexAfter(QLatin1String("\""), m_text, next);
        break;
      case '\'':
        next = indexAfter(QLatin1String("'"), m_text, next);
        break;
      case '<':
        if (startsAt(m_text, m_at, QLatin1String("<!ENTITY"))) note("entity declaration");
        break;
      case '[':
        m_isInside = true;
        break;
      case ']':
        m_isInside = false;
        break;
      case '(':
        // the parser recurses for each
        if (++m_openParentheses > maximalDepth) note("parentheses nested too deep");
        break;
      case ')':
        --m_openParentheses;
        break;
      case '>':
        m_openParentheses = 0;
        m_isComplete = !m_isInside;
        break;
      default:
        break;
    }
    m_at = next;
  }

  void note(const char* message) {
    if (!m_obstacle) m_obstacle = Obstacle{m_at, QLatin1String(message)};
  }

  const QString& m_text;
  int m_at;
  int m_openParentheses = 0;
  bool m_isInside = false;  // between the brackets
  bool m_isComplete = false;
  std::optional<Obstacle> m_obstacle;
};

/// Index of the next document type declaration before the root; -1 without one.
int findDocumentType(const QString& text, int from) {
  int at = text.indexOf(QLatin1Char('<'), from);
  while (at >= 0) {
    const int next = endOfOpaque(text, at);
    if (next == at) return startsAt(text, at, QLatin1String("<!DOCTYPE")) ? at : -1;
    at = text.indexOf(QLatin1Char('<'), next);
  }
  return -1;
}

/// Index after the tag that starts at `at`.
int endOfTag(const QString& text, int at) {
  while (++at < text.size()) {
    const QChar here = text.at(at);
    if (here == QLatin1Char('>')) return at + 1;
    if (here == QLatin1Char('"') || here == QLatin1Char('\'')) at = text.indexOf(here, at + 1);
    if (at < 0) break;
  }
  return text.size();
}

struct Reference {
  char32_t character;
  int end;  // index after it
};

int digitValue(QChar digit, int base) {
  bool isDigit = false;
  const int value = digit.unicode() < 128 ? QString(digit).toInt(&isDigit, base) : 0;
  return isDigit ? value : -1;
}

/// The reference beyond U+FFFF that starts with the `&` at `at`.
std::optional<Reference> longReference(const QString& text, int at) {
  if (!startsAt(text, at, QLatin1String("&#"))) return std::nullopt;
  const bool isHex = startsAt(text, at + 2, QLatin1String("x"));
  const int base = isHex ? 16 : 10;
  char32_t character = 0;
  int digit = at + (isHex ? 3 : 2);
  for (; digit < text.size() && character <= QChar::LastValidCodePoint; ++digit) {
    const int value = digitValue(text.at(digit), base);
    if (value < 0) break;
    character = character * static_cast<char32_t>(base) + static_cast<char32_t>(value);
  }
  const bool isLong = character > 0xffff && character <= QChar::LastValidCodePoint;
  if (!isLong || !startsAt(text, digit, QLatin1String(";"))) return std::nullopt;
  return Reference{character, digit + 1};
}

/// Index after the markup that starts with the `<` at `at` and contains no references; after the `<` itself
/// if a tag starts there.
int endOfMarkup(const QString& text, int at) {
  if (startsAt(text, at, QLatin1String("<!DOCTYPE"))) return DocumentTypeScan(text, at).end();
  const int next = endOfOpaque(text, at);
  return next == at ? at + 1 : next;
}

}  // namespace

std::optional<Obstacle> firstObstacle(const QString& text) {
  std::optional<Obstacle> first;
  int start = findDocumentType(text, 0);
  while (start >= 0 && !first) {  // there should be one at most, but Qt's parser reads any number of them
    const DocumentTypeScan documentType(text, start);
    first = documentType.obstacle();
    start = findDocumentType(text, documentType.end());
  }
  const int nul = text.indexOf(QChar(QChar::Null));
  if (nul >= 0 && (!first || nul < first->index)) first = Obstacle{nul, QLatin1String("NUL character")};
  return first;
}

bool isSurelyShallow(const QString& text) {
  int depth = 0;
  int at = text.indexOf(QLatin1Char('<'));
  while (at >= 0) {
    if (startsAt(text, at, QLatin1String("<!"))) return false;
    const bool isInstruction = startsAt(text, at, QLatin1String("<?"));
    const int end = isInstruction ? endOfOpaque(text, at) : endOfTag(text, at);
    if (startsAt(text, at, QLatin1String("</"))) {
      --depth;
    } else if (!isInstruction) {
      if (++depth > maximalDepth) return false;
      if (startsAt(text, end - 2, QLatin1String("/>"))) --depth;
    }
    at = text.indexOf(QLatin1Char('<'), end);
  }
  return true;
}

std::optional<QString> withLongReferencesReplaced(const QString& text) {
  QString result;
  int copied = 0;
  for (int at = 0; at < text.size();) {
    const QChar here = text.at(at);
    const auto reference = here == QLatin1Char('&') ? longReference(text, at) : std::nullopt;
    if (reference) {
      result += text.midRef(copied, at - copied);
      appendUtf16(reference->character, result);
      copied = at = reference->end;
    } else {
      at = here == QLatin1Char('<') ? endOfMarkup(text, at) : at + 1;
    }
  }
  if (copied == 0) return std::nullopt;
  return result + text.midRef(copied);
}

}  // namespace ztcad
