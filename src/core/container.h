#pragma once

#include <cstddef>
#include <list>

#include "../support/export.h"
#include "node_pool.h"

/// @file
/// Kinds of elements, and the containers that hold them.

/// Marks an element class with the number of its kind.
template <int Kind>
class ZTCAD_TEMPLATE_API ztCAD_cmnSelector2 {
 public:
  virtual ~ztCAD_cmnSelector2() = default;

 protected:
  ztCAD_cmnSelector2() = default;
  ztCAD_cmnSelector2(const ztCAD_cmnSelector2&) = default;
  ztCAD_cmnSelector2& operator=(const ztCAD_cmnSelector2&) = default;
};

/// Numbers of the kinds. Spheres and references have none.
enum ztCAD_Kind : int {
  ztCAD_KindDetail = 1,           ///< `ztCAD_Detail`, a rigid part
  ztCAD_KindTmplDetail = 2,       ///< `ztCAD_TmplDetail`
  ztCAD_KindStructure = 3,        ///< `ztCAD_Structure`, a placed group
  ztCAD_KindTmplStructure = 4,    ///< `ztCAD_TmplStructure`
  ztCAD_KindPoint = 10,           ///< `ztCAD_Point`
  ztCAD_KindTmplPoint = 11,       ///< `ztCAD_TmplPoint`
  ztCAD_KindLine = 13,            ///< `ztCAD_Line`, a polyline
  ztCAD_KindTmplLine = 14,        ///< `ztCAD_TmplLine`
  ztCAD_KindElementMIP = 16,      ///< `ztCAD_ElementMIP`, a mass-inertia element
  ztCAD_KindTmplElementMIP = 17,  ///< `ztCAD_TmplElementMIP`
  ztCAD_KindTriangle = 19,        ///< `ztCAD_Triangle`, a triangulated solid
  ztCAD_KindTmplTriangle = 20,    ///< `ztCAD_TmplTriangle`
};

namespace ztcad {
/// The element that a container holds by value or by pointer.
/// @{
template <typename Element>
Element& elementOf(Element& element) {
  return element;
}
template <typename Element>
Element& elementOf(Element* element) {
  return *element;
}
/// @}
}  // namespace ztcad

/// The elements of one kind, in the order in which they were added. Elements are stored by value: adding
/// stores a copy, and the address of a stored element does not change until the element is removed. Iterators
/// are those of the list.
template <typename T, int = 1, int = 1, template <typename...> class List = std::list>
class ZTCAD_TEMPLATE_API ztCAD_Cont {
 public:
  /// The standard member types of a range.
  /// @{
  using value_type = T;
  using iterator = typename List<T, ztCAD_NodeAllocator<T>>::iterator;
  using const_iterator = typename List<T, ztCAD_NodeAllocator<T>>::const_iterator;
  /// @}

  ztCAD_Cont() = default;
  ztCAD_Cont(const ztCAD_Cont&) = default;
  /// Keeps the addresses of as many elements as both have. By hand: that of a list moves nodes from another
  /// one, and no list may have the nodes of another one's pool.
  ztCAD_Cont& operator=(const ztCAD_Cont& other) {
    if (this == &other) return *this;
    auto mine = m_elements.begin();
    for (const T& element : other.m_elements) {
      if (mine == m_elements.end())
        m_elements.push_back(element);
      else
        *mine++ = element;
    }
    m_elements.erase(mine, m_elements.end());
    return *this;
  }
  virtual ~ztCAD_Cont() = default;

  /// Appends a copy of `element`.
  /// @return whether the element was NOT added: always false, there is no size limit
  bool add(const T& element) {
    m_elements.push_back(element);
    return false;
  }

  /// Appends a default-constructed element and returns it, so that it can be read in place.
  T& appendNew() { return m_elements.emplace_back(); }

  /// Removes the stored element at `address`. The address of a copy elsewhere, such as the object that a
  /// creation function returned, removes nothing.
  /// @return whether an element was removed
  bool remove(const void* address) {
    for (auto element = m_elements.begin(); element != m_elements.end(); ++element) {
      if (!ztcad::elementOf(*element).isSame(address)) continue;
      m_elements.erase(element);
      return true;
    }
    return false;
  }

  /// Removes the element at `position`, which must not be the end.
  /// @return the position of the next element
  iterator erase(iterator position) { return m_elements.erase(position); }

  /// Removes all elements; their addresses become invalid.
  void clear() { m_elements.clear(); }

  /// Exchanges the contents; addresses of stored elements stay valid.
  void swap(ztCAD_Cont& other) noexcept { m_elements.swap(other.m_elements); }

  /// Number of elements.
  std::size_t size() const { return m_elements.size(); }
  /// Whether there are no elements.
  [[nodiscard]] bool empty() const { return m_elements.empty(); }
  /// The range, in the order in which elements were added.
  /// @{
  iterator begin() { return m_elements.begin(); }
  iterator end() { return m_elements.end(); }
  const_iterator begin() const { return m_elements.begin(); }
  const_iterator end() const { return m_elements.end(); }
  /// @}

  /// The first and the last element; undefined for an empty container.
  /// @{
  T& front() { return m_elements.front(); }
  T& back() { return m_elements.back(); }
  const T& front() const { return m_elements.front(); }
  const T& back() const { return m_elements.back(); }
  /// @}

 private:
  List<T, ztCAD_NodeAllocator<T>> m_elements;
};

/// Placeholder for a kind of element that does not exist: its container is always empty and writes nothing.
class ZTCAD_API ztCAD_empty_stub_class {};
