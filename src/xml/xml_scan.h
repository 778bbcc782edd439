#pragma once

#include <optional>
#include <QLatin1String>
#include <QString>

namespace ztcad {

/// Scans of XML text before it is parsed. They do not check whether a text is well-formed: each result is
/// valid up to the first error in the text, and the parser goes no further.

/// A position that makes the text refused.
struct Obstacle {
  int index;
  QLatin1String message;
};

/// The first NUL, entity declaration or parenthesis nested too deep in a document type declaration.
std::optional<Obstacle> firstObstacle(const QString& text);

/// True only if no element is nested deeper than `maximalDepth`. False may also mean unknown: the scan gives
/// up at comments, CDATA sections and document type declarations.
bool isSurelyShallow(const QString& text);

/// The text with its numeric references beyond U+FFFF replaced by their characters; std::nullopt if it has
/// none.
std::optional<QString> withLongReferencesReplaced(const QString& text);

}  // namespace ztcad
