#pragma once

#include <cstddef>

/// @file
/// Memory that a pass over a list will need.

namespace ztcad {

/// Asks the processor for the memory of an element some places further on in its container. Nodes of a list
/// usually lie side by side, so its address follows from that of this element. A pass over a long list that
/// is in no fast cache would otherwise wait for each element.
///
/// @tparam Bytes of the element that will be used
template <std::size_t Bytes, typename Element>
void prefetchStartAfter([[maybe_unused]] const Element& element) noexcept {
#if defined(__GNUC__)
  constexpr std::size_t lineSize = 64;
  constexpr std::size_t places = 48;
  constexpr std::size_t links = 2 * sizeof(void*);  // of the list; they lie before the element
  // an address that may be no memory of this process is only prefetched, never used
  const char* const ahead =
      reinterpret_cast<const char*>(&element) + places * (sizeof(Element) + links) - links;
  for (std::size_t at = 0; at < Bytes + links; at += lineSize)
    __builtin_prefetch(ahead + at);
#endif
}

/// The same for the whole element. Does nothing for containers of pointers.
/// @{
template <typename Element>
void prefetchElementAfter(const Element& element) noexcept {
  prefetchStartAfter<sizeof(Element)>(element);
}
template <typename Element>
void prefetchElementAfter(Element* const& /*element*/) noexcept {}
/// @}

}  // namespace ztcad
