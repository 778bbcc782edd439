#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

namespace ztcad {

/// Elements nested deeper are refused: a deeper tree would overflow the stack when it is written or freed.
constexpr int maximalDepth = 256;

/// The outcome of a parse. After a success the message is empty, line and column are 0.
struct ParseOutcome {
  bool parsed = false;
  QString message;
  int line = 0;    // from 1, as `QDomDocument::setContent` counts
  int column = 0;  // from 1, in UTF-16 units
};

/// Parses XML into a new tree and assigns it to `tree`; other handles of the former tree keep that. Accepted
/// and refused texts, messages and positions are those of `QDomDocument::setContent`, and a failed parse
/// leaves in `tree` what was read up to the error. In addition these are refused, at the first position where
/// they occur and with an empty tree:
///
/// - elements nested deeper than `maximalDepth`, and parentheses nested deeper than that in a document type
///   declaration
/// - the declaration of an entity of any kind: before anything is expanded
/// - a NUL character
///
/// Text that is ill-formed before such a position keeps Qt's message. A numeric reference beyond U+FFFF is
/// read as its character (Qt truncates it to 16 bits).
///
/// Bytes are decoded by their byte order mark or declaration. A `QString` is not decoded, whatever it
/// declares.
/// @{
ParseOutcome parseXml(const QByteArray& bytes, QDomDocument& tree);
ParseOutcome parseXml(const QString& text, QDomDocument& tree);
/// @}

}  // namespace ztcad
