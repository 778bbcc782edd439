#include "element_index.h"

#include <algorithm>
#include <functional>

#include "repeats.h"

namespace ztcad::inspect {

namespace {

/// "point[2]" to its parts; number 0: not a step.
struct ParsedStep {
  std::string_view tag;
  std::int32_t number = 0;
};

ParsedStep parsed(std::string_view step) {
  ParsedStep result;
  const std::size_t open = step.find('[');
  result.tag = step.substr(0, open);
  if (open == std::string_view::npos) {
    result.number = 1;
    return result;
  }
  if (step.back() != ']') return {};
  const std::string_view digits = step.substr(open + 1, step.size() - open - 2);
  if (digits.empty() || digits.size() > 9) return {};
  for (const char c : digits) {
    if (c < '0' || c > '9') return {};
    result.number = 10 * result.number + (c - '0');
  }
  return result;
}

}  // namespace

std::size_t ElementIndex::HashOfStep::operator()(const Step& step) const {
  const std::uint64_t hash =
      mixed(static_cast<std::uint64_t>(step.holder) << 32U ^ static_cast<std::uint64_t>(step.number));
  return static_cast<std::size_t>(mixed(hash ^ std::hash<std::string_view>()(step.tag)));
}

ElementIndex::ElementIndex(ztCAD_GMDDocument* document) : m_tree(document) {
  const std::vector<Node>& nodes = m_tree.nodes();
  m_elements.reserve(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto index = static_cast<NodeIndex>(i);
    const Node& node = nodes[i];
    m_elements.emplace(node.element, index);
    m_names[node.name].push_back(index);
    if (node.number > 0) m_steps.emplace(Step{node.holder, tagOf(node.kind), node.number}, index);
  }
}

NodeIndex ElementIndex::findPath(std::string_view path) const {
  NodeIndex at = noNode;
  bool isRoot = true;
  if (path.empty() || path.front() != '/') return noNode;
  while (!path.empty()) {
    path.remove_prefix(1);
    const std::string_view text = path.substr(0, path.find('/'));
    path.remove_prefix(text.size());
    if (!text.empty() && text.front() == '@') return path.empty() ? at : noNode;
    const ParsedStep step = parsed(text);
    if (step.number == 0) return noNode;
    if (isRoot) {
      if (step.tag != "GMD" || step.number != 1) return noNode;
      isRoot = false;
      continue;
    }
    const auto found = m_steps.find(Step{at, step.tag, step.number});
    if (found == m_steps.end()) return noNode;
    at = found->second;
  }
  return at;
}

const std::vector<NodeIndex>* ElementIndex::named(std::string_view name) const {
  const auto found = m_names.find(name);
  return found == m_names.end() ? nullptr : &found->second;
}

NodeIndex ElementIndex::find(const ztCAD_Base* element) const {
  const auto found = m_elements.find(element);
  return found == m_elements.end() ? noNode : found->second;
}

}  // namespace ztcad::inspect
