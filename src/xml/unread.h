#pragma once

#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "../text/wide_utf8.h"
#include "element_view.h"
#include "read_observer.h"

namespace ztcad {

/// Tells an observer which attributes of an element nobody has asked for, in the order of the text.
///
/// @tparam Attribute has `name`, `isRead` and `position()`
/// @param element the "<" of its start tag
template <typename Attribute>
void reportUnreadAttributes(const Attribute* begin, const Attribute* end, const char* element,
                            ReadObserver& observer) {
  std::unordered_set<std::string_view> later;
  std::vector<std::pair<const Attribute*, bool>> unread;
  while (end != begin) {
    --end;
    const bool isRepeated = !later.insert(end->name).second;
    if (!end->isRead) unread.emplace_back(end, isRepeated);
  }
  for (auto found = unread.rbegin(); found != unread.rend(); ++found)
    observer.unreadAttribute(element, found->first->position(), fromWideUtf8(found->first->name),
                             found->second);
}

/// For `forEachChild` of an element whose children nobody reads.
inline void skipUnread(const ElementView& child) {
  if (!child.observer()) return;
  child.observer()->unreadElement(child.position(), child.tag());
  child.skipSilently();
}

}  // namespace ztcad
