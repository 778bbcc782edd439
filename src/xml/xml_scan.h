#pragma once

#include <optional>
#include <QLatin1String>
#include <QString>

namespace ztcad {

/// Looks at XML text before a parser does. Nothing here decides whether a text is well-formed: each function
/// holds good up to the first fault of the text, and the parser goes no further.

/// A place that refuses the text.
struct Obstacle {
  int index;
  QLatin1String message;
};

/// The first NUL, entity declaration or parenthesis nested too deep in a document type declaration.
std::optional<Obstacle> firstObstacle(const QString& text);

/// Whether no element is nested deeper than `maximalDepth`. False may also mean that this quick look cannot
/// tell: it gives up at comments, CDATA sections and document type declarations.
bool isSurelyShallow(const QString& text);

/// The text with the characters themselves in place of numeric references beyond U+FFFF; nothing when it has
/// none.
std::optional<QString> withLongReferencesRead(const QString& text);

}  // namespace ztcad
