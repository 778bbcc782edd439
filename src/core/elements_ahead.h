#pragma once

#include <cstddef>

namespace ztcad {

/// Asks the processor for the memory of an element some places further on in its container. Nodes of a list
/// usually lie side by side, so its address follows from that of this element. A pass over a long list that
/// is in no fast cache would otherwise wait for each element.
///
/// @tparam bytes of the element that will be used
template <std::size_t bytes, typename Element>
void prefetchElementAfter([[maybe_unused]] const Element& element) noexcept {
#if defined(__GNUC__)
  constexpr std::size_t lineSize = 64;
  constexpr std::size_t places = 12;
  constexpr std::size_t nodeSize = sizeof(Element) + 2 * sizeof(void*);
  // an address that may be no memory of this process is only prefetched, never used
  const char* const ahead = reinterpret_cast<const char*>(&element) + places * nodeSize - 2 * sizeof(void*);
  for (std::size_t at = 0; at < bytes + 2 * sizeof(void*); at += lineSize)
    __builtin_prefetch(ahead + at);
#endif
}

}  // namespace ztcad
