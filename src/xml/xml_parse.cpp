#include "xml_parse.h"

#include <optional>
#include <QBuffer>
#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <tuple>

#include "../text/windows1251.h"
#include "xml_scan.h"

namespace ztcad {

namespace {

struct Position {
  int line = 1;
  int column = 1;
};

bool operator<(const Position& a, const Position& b) {
  return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

/// The position that Qt's parser reports for the character at `index`.
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

// -------------------------------------------------------------------------------- decoding and inspection

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// Whether the text begins with a declaration of windows-1251, found as Qt finds it.
bool declaresWindows1251(const QString& text) {
  const QRegularExpression declaration(QLatin1String(R"(^<\?xml[^>]*?encoding[^'">]*['"]([^'">]*))"));
  const QString name = declaration.match(text).captured(1);
  const QTextCodec* const codec = QTextCodec::codecForName(name.toLatin1());
  return codec && codec->name() == "windows-1251";
}

/// Replaces what Qt made of the byte 98 hex in windows-1251 by U+0098. The code page leaves that byte
/// undefined, and a Qt without ICU decodes it as a replacement character: a saved text would not be read
/// back, and would differ between systems.
void keepUndefinedByte(const QByteArray& bytes, QString& text) {
  constexpr char undefined = '\x98';
  if (text.size() != bytes.size() || !bytes.contains(undefined) || !declaresWindows1251(text)) return;
  for (int at = bytes.indexOf(undefined); at >= 0; at = bytes.indexOf(undefined, at + 1))
    text[at] = windows1251ToUnicode(static_cast<unsigned char>(undefined));
}

/// Decodes as Qt's parser does. A block without characters ends the text, as it does for the parser.
QString decoded(const QByteArray& bytes) {
  QBuffer buffer;
  buffer.setData(bytes);
  QXmlInputSource source(&buffer);
  QString text;
  text.reserve(bytes.size());
  while (true) {
    source.fetchData();
    const QString block = source.data();
    if (block.isEmpty()) break;
    text += block;
  }
  keepUndefinedByte(bytes, text);
  return text;
}

/// Parses a text as `QDomDocument::setContent` does, without building a tree, and measures how deep elements
/// are nested.
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
  /// Where parsing stopped; undefined for a well-formed text.
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

// -------------------------------------------------------------------------------- refusals

ParseOutcome refused(const QString& message, Position at) { return {false, message, at.line, at.column}; }

/// The refusal of a text from which Qt must not build a tree; std::nullopt if it may.
std::optional<ParseOutcome> refusal(const QString& text) {
  const auto obstacle = firstObstacle(text);
  if (!obstacle && isSurelyShallow(text)) return std::nullopt;  // saves a second parse of nearly every text
  const Inspector inspector(obstacle ? text.left(obstacle->index) : text);
  if (inspector.tooDeep())
    return refused(QString(QLatin1String("elements nested deeper than %1")).arg(maximalDepth),
                   inspector.stop());
  if (!obstacle) return std::nullopt;

  const Position place = positionOf(text, obstacle->index);
  if (!inspector.wellFormed() && inspector.stop() < place) return std::nullopt;
  return refused(obstacle->message, place);
}

}  // namespace

ParseOutcome parseXml(const QByteArray& bytes, QDomDocument& tree) { return parseXml(decoded(bytes), tree); }

ParseOutcome parseXml(const QString& text, QDomDocument& tree) {
  tree = QDomDocument();
  if (const auto refusedOutcome = refusal(text)) return *refusedOutcome;
  ParseOutcome outcome;
  outcome.parsed = tree.setContent(text, &outcome.message, &outcome.line, &outcome.column);
  if (!text.contains(QLatin1String("&#"))) return outcome;
  const auto whole = withLongReferencesReplaced(text);
  if (whole && !refusal(*whole)) tree.setContent(*whole);
  return outcome;
}

}  // namespace ztcad
