#pragma once

#include "../number/number_list.h"
#include "../xml/element_view.h"

namespace ztcad {

/// Parses an attribute that consists of a word and exactly `Count` numbers. False, with the values
/// unspecified, for any other text and for spellings that only the parsers of single numbers know.
template <typename Number, int Count>
[[nodiscard]] bool parseWordAndNumbers(const AttributeBytes& attribute, const QString& word,
                                       Number (&values)[Count]) {
  return attribute.state == AttributeBytes::Known &&
         parseWordAndNumbers(attribute.ascii, attribute.endOfMemory, word, values, int{Count});
}

}  // namespace ztcad
