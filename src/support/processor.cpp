#include "processor.h"

#include <algorithm>

#if defined(_MSC_VER) && (defined(_M_IX86) || (defined(_M_X64) && !defined(_M_ARM64EC)))
#define ZTCAD_CPUID_INTRINSIC
#include <intrin.h>
#elif defined(__GNUC__) && (defined(__i386__) || defined(__x86_64__))
#define ZTCAD_CPUID_HEADER
#include <cpuid.h>
#endif

namespace ztcad {
namespace {

constexpr std::uint32_t identificationLeaf = 0;
constexpr std::uint32_t featureLeaf = 1;
constexpr std::uint32_t cacheLeaf = 4;
constexpr std::uint32_t hyperThreadingBit = 1U << 28U;

// "GenuineIntel", spelled by ebx, edx, ecx
bool isIntel(const CpuidRegisters& identification) {
  return identification.ebx == 0x756e6547U && identification.edx == 0x49656e69U &&
         identification.ecx == 0x6c65746eU;
}

std::uint32_t threadsPerCore(const CpuidQuery& query) {
  constexpr std::uint32_t unknown = 1;
  const auto identification = query(identificationLeaf, 0);
  if (!identification || !isIntel(*identification)) return unknown;
  const std::uint32_t lastLeaf = identification->eax;
  if (lastLeaf < cacheLeaf) return unknown;

  const auto features = query(featureLeaf, 0);
  if (!features || (features->edx & hyperThreadingBit) == 0) return unknown;

  // the first cache belongs to one core, so the threads that share it are those of the core
  const auto firstCache = query(cacheLeaf, 0);
  if (!firstCache) return unknown;
  return ((firstCache->eax >> 14U) & 0xFFFU) + 1;
}

}  // namespace

std::optional<CpuidRegisters> queryCpuid(std::uint32_t leaf, std::uint32_t subleaf) {
#if defined(ZTCAD_CPUID_INTRINSIC)
  int words[4] = {};
  __cpuidex(words, static_cast<int>(leaf & 0x80000000U), 0);
  if (static_cast<std::uint32_t>(words[0]) < leaf) return std::nullopt;
  __cpuidex(words, static_cast<int>(leaf), static_cast<int>(subleaf));
  return CpuidRegisters{static_cast<std::uint32_t>(words[0]), static_cast<std::uint32_t>(words[1]),
                        static_cast<std::uint32_t>(words[2]), static_cast<std::uint32_t>(words[3])};
#elif defined(ZTCAD_CPUID_HEADER)
  CpuidRegisters found;
  if (__get_cpuid_count(leaf, subleaf, &found.eax, &found.ebx, &found.ecx, &found.edx) == 0)
    return std::nullopt;
  return found;
#else
  static_cast<void>(leaf);
  static_cast<void>(subleaf);
  return std::nullopt;
#endif
}

std::uint32_t physicalCores(std::uint32_t processors, const CpuidQuery& query) {
  if (processors <= 1) return 1;
  return std::max(processors / threadsPerCore(query), 1U);
}

}  // namespace ztcad
