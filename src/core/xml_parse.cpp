#include "xml_parse.h"

#include <optional>
#include <QBuffer>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <tuple>

namespace ztcad {

namespace {

struct Position {
  int line = 1;
  int column = 1;
};

bool operator<(const Position& a, const Position& b) {
  return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

/// Where Qt's parser says that the character at `index` stands.
Position positionOf(const QString& text, int index) {
  const auto endsLine = [&](int at) {
    if (text.at(at) == QLatin1Char('\n')) return true;
    return text.at(at) == QLatin1Char('\r') &&
           (at + 1 == text.size() || text.at(at + 1) != QLatin1Char('\n'));
  };
  Position position;
  for (int at = 0; at < index; ++at) {
    ++position.column;
    if (endsLine(at)) position = {position.line + 1, 1};
  }
  return position;
}

// ------------------------------------------------------------------------------------- the text as the parser sees it

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// Decodes as Qt's parser does. A block that gives no characters ends the text, for the parser too.
QString decoded(const QByteArray& bytes) {
  QBuffer buffer;
  buffer.setData(bytes);
  QXmlInputSource source(&buffer);
  QString text;
  text.reserve(bytes.size());
  while (true) {
    source.fetchData();
    const QString block = source.data();
    if (block.isEmpty()) return text;
    text += block;
  }
}

/// Reads a text as `QDomDocument::setContent` does, but builds nothing and looks how deep the elements are nested.
class Inspector final : public QXmlDefaultHandler {
 public:
  explicit Inspector(const QString& text) {
    QXmlInputSource source;
    source.setData(text);
    QXmlSimpleReader reader;
    reader.setFeature(QLatin1String("http://xml.org/sax/features/namespaces"), false);
    reader.setFeature(QLatin1String("http://xml.org/sax/features/namespace-prefixes"), true);
    reader.setFeature(QLatin1String("http://trolltech.com/xml/features/report-whitespace-only-CharData"),
                      false);
    reader.setContentHandler(this);
    reader.setErrorHandler(this);
    reader.setLexicalHandler(this);
    reader.setDeclHandler(this);
    reader.setDTDHandler(this);
    m_wellFormed = reader.parse(&source);
  }

  bool wellFormed() const { return m_wellFormed; }
  bool tooDeep() const { return m_depth > maximalDepth; }
  /// Where reading stopped; of a text that is not well-formed only.
  Position stop() const { return m_stop; }

  bool startElement(const QString&, const QString&, const QString&, const QXmlAttributes&) override {
    return ++m_depth <= maximalDepth;
  }
  bool endElement(const QString&, const QString&, const QString&) override {
    --m_depth;
    return true;
  }
  bool fatalError(const QXmlParseException& exception) override {
    m_stop = {exception.lineNumber(), exception.columnNumber()};
    return false;
  }

 private:
  int m_depth = 0;
  bool m_wellFormed = false;
  Position m_stop;
};

QT_WARNING_POP

// ------------------------------------------------------------------------------------------ what the parser must not see

/// Behind the next `closing`, the end of the text without one.
int behind(QLatin1String closing, const QString& text, int from) {
  const int found = text.indexOf(closing, from);
  return found < 0 ? text.size() : found + closing.size();
}

bool startsAt(const QString& text, int at, QLatin1String word) {
  return text.midRef(at, word.size()) == word;
}

/// The end of the comment, CDATA section or processing instruction that starts at `at`; `at` when none does.
int behindOpaque(const QString& text, int at) {
  if (startsAt(text, at, QLatin1String("<!--"))) return behind(QLatin1String("-->"), text, at + 4);
  if (startsAt(text, at, QLatin1String("<![CDATA["))) return behind(QLatin1String("]]>"), text, at + 9);
  if (startsAt(text, at, QLatin1String("<?"))) return behind(QLatin1String("?>"), text, at + 2);
  return at;
}

/// A place that refuses the text.
struct Obstacle {
  int index;
  QLatin1String message;
};

/// Walks through a document type declaration. What is ill-formed in it may be misunderstood from there on, which does
/// no harm: the parser stops there.
class DocumentTypeScan {
 public:
  /// @param start index of the `<!DOCTYPE`
  DocumentTypeScan(const QString& text, int start) : m_text(text), m_at(start + 9) {
    while (m_at < text.size() && !m_isComplete)
      step();
  }

  /// Index behind the declaration.
  int end() const { return m_at; }
  const std::optional<Obstacle>& obstacle() const { return m_obstacle; }

 private:
  void step() {
    const int next = behindOpaque(m_text, m_at);
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
        next = behind(QLatin1String("\""), m_text, next);
        break;
      case '\'':
        next = behind(QLatin1String("'"), m_text, next);
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
        // the parser calls itself for each
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

/// Index of the document type declaration; -1 without one.
int findDocumentType(const QString& text) {
  int at = text.indexOf(QLatin1Char('<'));
  while (at >= 0) {
    const int next = behindOpaque(text, at);
    if (next == at) return startsAt(text, at, QLatin1String("<!DOCTYPE")) ? at : -1;
    at = text.indexOf(QLatin1Char('<'), next);
  }
  return -1;
}

std::optional<Obstacle> firstObstacle(const QString& text) {
  std::optional<Obstacle> first;
  if (const int start = findDocumentType(text); start >= 0) first = DocumentTypeScan(text, start).obstacle();
  const int nul = text.indexOf(QChar(QChar::Null));
  if (nul >= 0 && (!first || nul < first->index)) first = Obstacle{nul, QLatin1String("NUL character")};
  return first;
}

ParseOutcome refused(const QString& message, Position at) { return {false, message, at.line, at.column}; }

/// The refusal of a text that Qt may not build a tree from; nothing when it may.
std::optional<ParseOutcome> refusal(const QString& text) {
  const auto obstacle = firstObstacle(text);
  const Inspector inspector(obstacle ? text.left(obstacle->index) : text);
  if (inspector.tooDeep())
    return refused(QString(QLatin1String("elements nested deeper than %1")).arg(maximalDepth),
                   inspector.stop());
  if (!obstacle) return std::nullopt;

  const Position place = positionOf(text, obstacle->index);
  if (!inspector.wellFormed() && inspector.stop() < place) return std::nullopt;
  return refused(obstacle->message, place);
}

// ------------------------------------------------------------------------------- numeric references beyond 16 bits

struct Reference {
  char32_t character;
  int end;  // index behind it
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
  if (!startsAt(text, digit, QLatin1String(";")) || !QChar::requiresSurrogates(character))
    return std::nullopt;
  return Reference{character, digit + 1};
}

/// Index behind the part that starts at the `<` at `at` and in which no references are read; behind the `<` alone when
/// a tag starts there.
int behindMarkup(const QString& text, int at) {
  if (startsAt(text, at, QLatin1String("<!DOCTYPE"))) return DocumentTypeScan(text, at).end();
  const int next = behindOpaque(text, at);
  return next == at ? at + 1 : next;
}

/// The text with the characters themselves in place of references beyond U+FFFF; nothing when it has none.
std::optional<QString> withLongReferencesRead(const QString& text) {
  QString result;
  int copied = 0;
  for (int at = 0; at < text.size();) {
    if (text.at(at) == QLatin1Char('<')) {
      at = behindMarkup(text, at);
    } else if (const auto reference = longReference(text, at)) {
      result += text.midRef(copied, at - copied);
      result += QChar(QChar::highSurrogate(reference->character));
      result += QChar(QChar::lowSurrogate(reference->character));
      copied = at = reference->end;
    } else {
      ++at;
    }
  }
  if (copied == 0) return std::nullopt;
  return result + text.midRef(copied);
}

}  // namespace

ParseOutcome parseXml(const QByteArray& bytes, QDomDocument& tree) { return parseXml(decoded(bytes), tree); }

ParseOutcome parseXml(const QString& text, QDomDocument& tree) {
  tree = QDomDocument();
  if (const auto refusedOutcome = refusal(text)) return *refusedOutcome;
  ParseOutcome outcome;
  outcome.parsed = tree.setContent(text, &outcome.message, &outcome.line, &outcome.column);
  if (!text.contains(QLatin1String("&#"))) return outcome;
  const auto whole = withLongReferencesRead(text);
  if (whole && !refusal(*whole)) tree.setContent(*whole);
  return outcome;
}

}  // namespace ztcad
