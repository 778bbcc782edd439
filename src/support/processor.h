#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace ztcad {

/// What the processor's CPUID instruction leaves behind.
struct CpuidRegisters {
  std::uint32_t eax = 0;
  std::uint32_t ebx = 0;
  std::uint32_t ecx = 0;
  std::uint32_t edx = 0;
};

/// Answers one leaf of CPUID; nothing where there is no such instruction or no such leaf.
using CpuidQuery = std::function<std::optional<CpuidRegisters>(std::uint32_t leaf, std::uint32_t subleaf)>;

/// The query that asks the processor on which the caller runs.
std::optional<CpuidRegisters> queryCpuid(std::uint32_t leaf, std::uint32_t subleaf);

/// Number of physical cores behind `processors` logical ones, at least 1.
///
/// Only Intel processors with hyper-threading have fewer cores than processors here; whatever cannot be found
/// out counts as one thread for each core. With a single processor `query` is not called at all, and no leaf
/// is asked for that the processor does not claim to have: it would answer with the data of another one.
std::uint32_t physicalCores(std::uint32_t processors, const CpuidQuery& query);

}  // namespace ztcad
