#pragma once

#include <optional>

#include "../text/short_text.h"

namespace ztcad {

class ElementView;

/// Reads the name of an element and reports it to a review; std::nullopt if the element has none.
std::optional<ztCAD_ShortText> readName(const ElementView& element);

/// Reads a text that is kept as it is and reports it to a review; empty without the attribute.
ztCAD_ShortText readKeptText(const ElementView& element, const QString& attribute);

}  // namespace ztcad
