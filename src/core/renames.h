#pragma once

#include <utility>
#include <vector>

#include "../text/short_text.h"

namespace ztcad {

/// The renames of one pass. They are undone if the pass does not come to its end, because memory ran out:
/// names of which only some are unique could make the next pass give a name twice.
///
/// @tparam Named has `shortName` and `setShortName`; setting a name that the element had before must not
/// throw
template <typename Named>
class Renames {
 public:
  Renames() = default;
  Renames(const Renames&) = delete;
  Renames& operator=(const Renames&) = delete;
  ~Renames() {
    for (auto former = m_former.rbegin(); former != m_former.rend(); ++former)
      former->first->setShortName(former->second);
  }

  /// @param element must outlive this object
  void rename(Named& element, const ztCAD_ShortText& name) {
    m_former.emplace_back(&element, element.shortName());
    element.setShortName(name);
  }

  /// Calls `visit(element, formerName)` for each rename since the last `keep`.
  template <typename Visit>
  void forEach(Visit&& visit) const {
    for (const auto& [element, former] : m_former)
      visit(*element, former.toString());
  }

  /// Makes the renames final.
  void keep() { m_former.clear(); }

 private:
  std::vector<std::pair<Named*, ztCAD_ShortText>> m_former;
};

}  // namespace ztcad
