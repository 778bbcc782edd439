#pragma once

#include <functional>
#include <string_view>

#include "element_view.h"
#include "xml_text.h"

namespace ztcad {

/// Reads plain XML from its bytes, without a tree and without copies of long texts. Plain XML is what
/// programs usually write: UTF-8 or windows-1251; elements, attributes, text, comments, the five predefined
/// entities and numeric references; processing instructions between elements; CDATA sections between elements
/// and as all that an element holds; no document type.
///
/// The views return what those of `readXml` return, twice as fast. Anything doubtful is refused (ill-formed
/// text, nesting too deep, texts and lists beyond their limits, rare forms of any kind); the whole text must
/// then be read by `readXml`.
///
/// @param visit called with the root element, also for a text that proves not to be plain later on. Must read
///              every `text()` that it asks for completely: what it does not decode is not validated
/// @param observer learns what is not read; may be null
/// @return false for a text that is not plain; the results of `visit` must then be discarded, and what the
///         observer has learnt
[[nodiscard]] bool readPlainXml(std::string_view bytes, XmlBytes kind,
                                const std::function<void(const ElementView& root)>& visit,
                                ReadObserver* observer = nullptr);

}  // namespace ztcad
