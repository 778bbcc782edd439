#include "name_cache.h"

#include <algorithm>
#include <numeric>

namespace ztcad {

NameCache::Index NameCache::add(const QString& name, const std::string& bytes) {
  const auto index = static_cast<Index>(m_names.size());
  m_names.push_back({name, ' ' + bytes + "=\"", 0});
  m_indices.emplace(name, index);
  return index;
}

void NameCache::rankAll() {
  std::vector<Index> order(m_names.size());
  std::iota(order.begin(), order.end(), Index{0});
  std::sort(order.begin(), order.end(),
            [this](Index a, Index b) { return m_names[a].text < m_names[b].text; });
  std::uint32_t rank = 0;
  for (const Index name : order)
    m_names[name].rank = rank++;
  m_ranked = m_names.size();
}

void NameCache::clear() {
  m_names.clear();
  m_indices.clear();
  m_recent.fill({});
  m_ranked = 0;
}

}  // namespace ztcad
