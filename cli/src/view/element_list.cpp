#include "element_list.h"

#include <ztCAD/inspect.h>

#include <charconv>
#include <memory>
#include <new>
#include <string_view>

#include "../info/contents.h"

namespace cli {

namespace {

struct EndIndex {
  void operator()(ztCADInspect_Index* index) const { ztCADInspect_endIndex(index); }
};

/// The path of an element, in a buffer that is used again.
std::string_view pathOf(ztCADInspect_Index* index, const ztCAD_Base* element, std::string& buffer) {
  const auto read = [&] {
    return ztCADInspect_pathOf(index, element, buffer.data(), static_cast<std::int64_t>(buffer.size()));
  };
  std::int64_t length = read();
  if (length >= static_cast<std::int64_t>(buffer.size())) {
    buffer.resize(static_cast<std::size_t>(length) + 1);
    length = read();
  }
  return length <= 0 ? std::string_view() : std::string_view(buffer).substr(0, std::size_t(length));
}

}  // namespace

ElementList::ElementList(ztCAD_GMDDocument* document) {
  add(document, none);
  m_indices.reserve(m_elements.size());
  for (std::size_t i = 0; i < m_elements.size(); ++i)
    m_indices.emplace(m_elements[i].element, static_cast<std::int64_t>(i));
  addSteps(document);
}

template <typename Holder>
void ElementList::add(Holder* holder, std::int64_t parent) {
  for (const std::int32_t kind : allKinds())
    for (ztCAD_Base* element : elementsOf(holder, kind)) {
      const auto index = static_cast<std::int64_t>(m_elements.size());
      m_elements.push_back({element, kind, parent});
      if (isHolder(kind)) add(element, index);
    }
}

/// Takes the last step of each path: "/GMD/structure[1]/point[2]".
void ElementList::addSteps(ztCAD_GMDDocument* document) {
  const std::unique_ptr<ztCADInspect_Index, EndIndex> index(ztCADInspect_openIndex(document));
  if (!index) throw std::bad_alloc();
  std::string buffer(256, '\0');
  for (ListedElement& listed : m_elements) {
    std::string_view step = pathOf(index.get(), listed.element, buffer);
    step = step.substr(step.rfind('/') + 1);
    const std::size_t bracket = step.find('[');
    if (bracket == std::string_view::npos) continue;
    listed.tag = step.substr(0, bracket);
    std::from_chars(step.data() + bracket + 1, step.data() + step.size(), listed.number);
  }
}

std::int64_t ElementList::find(const ztCAD_Base* element) const {
  const auto found = m_indices.find(element);
  return found == m_indices.end() ? none : found->second;
}

}  // namespace cli
