#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ztcad::inspect {

/// A hash of 64 bits, of which each bit depends on all bits of `value`.
inline std::uint64_t mixed(std::uint64_t value) {
  value ^= value >> 32U;
  value *= 0xd6e8feb86659fd93U;
  value ^= value >> 32U;
  value *= 0xd6e8feb86659fd93U;
  return value ^ value >> 32U;
}

/// Bits, of which each can be set once.
class Bits {
 public:
  explicit Bits(std::size_t count) : m_words((count + 63) / 64) {}

  bool test(std::size_t index) const { return (m_words[index / 64] >> (index % 64) & 1U) != 0; }
  void set(std::size_t index) { m_words[index / 64] |= std::uint64_t{1} << (index % 64); }

 private:
  std::vector<std::uint64_t> m_words;
};

/// Which of `count` things equal an earlier one, in ascending order.
///
/// Most things are unlike all others. They are told apart by one bit of their hash and never compared; only the
/// rest, about one in eight, goes through a table. Takes 4 bytes of memory for a thing, and 12 for each that is
/// like another one. Things that were chosen to collide are sorted instead.
/// @param takes whether a thing counts at all
/// @param hash  of 64 bits
/// @param less  an order in which only equal things are equivalent
template <class Takes, class Hash, class Less>
std::vector<std::uint32_t> findRepeats(std::size_t count, const Takes& takes, const Hash& hash,
                                       const Less& less) {
  std::size_t bitCount = 64;
  while (bitCount < 8 * count)
    bitCount *= 2;
  std::vector<std::uint32_t> candidates;
  {
    Bits once(bitCount);
    Bits again(bitCount);
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
      if (!takes(i)) continue;
      const std::size_t bit = hash(i) & (bitCount - 1);
      if (once.test(bit)) {
        again.set(bit);
        ++hits;
      } else {
        once.set(bit);
      }
    }
    if (hits == 0) return {};
    candidates.reserve(std::min(count, 2 * hits));
    for (std::size_t i = 0; i < count; ++i)
      if (takes(i) && again.test(hash(i) & (bitCount - 1)))
        candidates.push_back(static_cast<std::uint32_t>(i));
  }

  const std::uint32_t nothing = 0xffffffffU;
  const std::size_t farthest = 128;
  std::size_t tableSize = 64;
  while (2 * tableSize < 3 * candidates.size())
    tableSize *= 2;
  std::vector<std::uint32_t> repeats;
  bool isTableGood = true;
  {
    std::vector<std::uint32_t> table(tableSize, nothing);
    for (const std::uint32_t i : candidates) {
      std::size_t slot = (hash(i) >> 20U) & (tableSize - 1);
      std::size_t distance = 0;
      while (table[slot] != nothing && (less(table[slot], i) || less(i, table[slot])) &&
             distance < farthest) {
        slot = (slot + 1) & (tableSize - 1);
        ++distance;
      }
      if (distance == farthest) {
        isTableGood = false;
        break;
      }
      if (table[slot] == nothing)
        table[slot] = i;
      else
        repeats.push_back(i);
    }
  }
  if (isTableGood) return repeats;

  repeats.clear();
  std::sort(candidates.begin(), candidates.end(),
            [&](std::uint32_t a, std::uint32_t b) { return less(a, b) || (!less(b, a) && a < b); });
  for (std::size_t i = 1; i < candidates.size(); ++i)
    if (!less(candidates[i - 1], candidates[i])) repeats.push_back(candidates[i]);
  std::sort(repeats.begin(), repeats.end());
  return repeats;
}

}  // namespace ztcad::inspect
