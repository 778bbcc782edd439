#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace ztcad {

/// The results of the CPUID instruction.
struct CpuidRegisters {
  std::uint32_t eax = 0;
  std::uint32_t ebx = 0;
  std::uint32_t ecx = 0;
  std::uint32_t edx = 0;
};

/// Returns one leaf of CPUID; std::nullopt if the processor has no such instruction or leaf.
using CpuidQuery = std::function<std::optional<CpuidRegisters>(std::uint32_t leaf, std::uint32_t subleaf)>;

/// Queries the processor on which the caller runs.
std::optional<CpuidRegisters> queryCpuid(std::uint32_t leaf, std::uint32_t subleaf);

/// Number of physical cores among `processors` logical ones, at least 1.
///
/// Only Intel processors with hyper-threading count as having several threads per core; where the number
/// cannot be determined, it is taken as one. With a single logical processor `query` is not called. Leaves
/// above the highest that the processor reports are never queried: it would return the data of another leaf.
std::uint32_t physicalCores(std::uint32_t processors, const CpuidQuery& query);

}  // namespace ztcad
