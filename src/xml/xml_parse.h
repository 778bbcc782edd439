#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

namespace ztcad {

/// Elements nested deeper are refused: the tree of a deeper text would overflow the stack when it is written
/// or freed.
constexpr int maximalDepth = 256;

/// What became of a text. After a success message, line and column are empty.
struct ParseOutcome {
  bool parsed = false;
  QString message;
  int line = 0;    // from 1, as `QDomDocument::setContent` counts
  int column = 0;  // from 1, in UTF-16 units
};

/// Parses XML into `tree`, which becomes a new tree: other handles of the old one keep it. Accepted and
/// refused text, messages and positions are those of `QDomDocument::setContent`; a failed parse leaves in
/// `tree` what was read up to the fault. In addition these are refused, at the first place where they occur
/// and with an empty tree:
///
/// - elements nested deeper than `maximalDepth`, parentheses nested deeper than that in a document type
///   declaration
/// - the declaration of an entity of any kind: before anything is expanded
/// - a NUL character
///
/// Text that is ill-formed before such a place keeps Qt's message. A numeric reference beyond U+FFFF is read
/// as its character (Qt cuts it to 16 bits).
///
/// The bytes are decoded by their byte order mark or declaration; a `QString` is text already, whatever it
/// declares.
ParseOutcome parseXml(const QByteArray& bytes, QDomDocument& tree);
ParseOutcome parseXml(const QString& text, QDomDocument& tree);

}  // namespace ztcad
