#pragma once

#include <functional>

#include "element_view.h"
#include "xml_text.h"

namespace ztcad {

/// Reads any well-formed XML without a tree, in one pass. The views return what a `DomView` of the tree that
/// Qt 5.15 builds of the text returns.
///
/// @param visit called with the root element, if there is one. Of an ill-formed text it sees what comes
///              before the error: elements whose start tag is complete and texts that end before markup
/// @param observer learns what is not read; may be null
/// @return whether the text was parsed. A text or list beyond its limit (text_limits.h) is refused, too. If
///         the text was refused, the results of `visit` must be discarded
ParseOutcome readXml(const XmlText& text, const std::function<void(const ElementView& root)>& visit,
                     ReadObserver* observer = nullptr);

}  // namespace ztcad
