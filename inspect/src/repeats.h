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

/// Things that may equal each other, numbered from 0.
/// @tparam Takes whether a thing counts at all
/// @tparam Hash  of 64 bits
/// @tparam Less  an order in which only equal things are equivalent
template <class Takes, class Hash, class Less>
class Repeats {
 public:
  Repeats(std::size_t count, Takes takes, Hash hash, Less less)
      : m_count(count), m_takes(takes), m_hash(hash), m_less(less) {}

  /// Which things equal an earlier one, in ascending order.
  ///
  /// Most things are unlike all others. They are told apart by some bits of their hash and never compared;
  /// only the rest, about one in eight, goes through a table. Takes 4 bytes of memory for a thing, and 12 for
  /// each that is like another one. Things that were chosen to collide are sorted instead.
  std::vector<std::uint32_t> find() const {
    std::vector<std::uint32_t> candidates = findCandidates();
    std::vector<std::uint32_t> repeats;
    if (!findByTable(candidates, repeats)) findBySorting(candidates, repeats);
    return repeats;
  }

 private:
  /// Things of which another one may have the same hash.
  std::vector<std::uint32_t> findCandidates() const {
    std::size_t bitCount = 64;
    while (bitCount < 8 * m_count)
      bitCount *= 2;
    Bits once(bitCount);
    Bits again(bitCount);
    std::size_t hits = 0;
    for (std::size_t i = 0; i < m_count; ++i) {
      if (!m_takes(i)) continue;
      const std::size_t bit = m_hash(i) & (bitCount - 1);
      if (once.test(bit)) {
        again.set(bit);
        ++hits;
      } else {
        once.set(bit);
      }
    }
    std::vector<std::uint32_t> candidates;
    if (hits == 0) return candidates;
    candidates.reserve(std::min(m_count, 2 * hits));
    for (std::size_t i = 0; i < m_count; ++i)
      if (m_takes(i) && again.test(m_hash(i) & (bitCount - 1)))
        candidates.push_back(static_cast<std::uint32_t>(i));
    return candidates;
  }

  /// @return false: too many collisions
  bool findByTable(const std::vector<std::uint32_t>& candidates, std::vector<std::uint32_t>& repeats) const {
    const std::uint32_t nothing = 0xffffffffU;
    const std::size_t farthest = 128;
    std::size_t tableSize = 64;
    while (2 * tableSize < 3 * candidates.size())
      tableSize *= 2;
    std::vector<std::uint32_t> table(tableSize, nothing);
    for (const std::uint32_t i : candidates) {
      std::size_t slot = (m_hash(i) >> 20U) & (tableSize - 1);
      std::size_t distance = 0;
      while (table[slot] != nothing && !areEqual(table[slot], i)) {
        if (++distance == farthest) return false;
        slot = (slot + 1) & (tableSize - 1);
      }
      if (table[slot] == nothing)
        table[slot] = i;
      else
        repeats.push_back(i);
    }
    return true;
  }

  void findBySorting(std::vector<std::uint32_t>& candidates, std::vector<std::uint32_t>& repeats) const {
    repeats.clear();
    std::sort(candidates.begin(), candidates.end(),
              [&](std::uint32_t a, std::uint32_t b) { return m_less(a, b) || (!m_less(b, a) && a < b); });
    for (std::size_t i = 1; i < candidates.size(); ++i)
      if (!m_less(candidates[i - 1], candidates[i])) repeats.push_back(candidates[i]);
    std::sort(repeats.begin(), repeats.end());
  }

  bool areEqual(std::uint32_t a, std::uint32_t b) const { return !m_less(a, b) && !m_less(b, a); }

  std::size_t m_count;
  Takes m_takes;
  Hash m_hash;
  Less m_less;
};

}  // namespace ztcad::inspect
