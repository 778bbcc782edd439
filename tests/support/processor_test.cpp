#include "support/processor.h"

#include <gtest/gtest.h>
#include <omp.h>
#include <cctype>
#include <cstring>
#include <string>
#include <vector>

#include "support/_Common/ztParallel.h"

namespace {

using ztcad::CpuidRegisters;
using ztcad::physicalCores;

std::uint32_t fourCharacters(const std::string& text, std::size_t from) {
  std::uint32_t value = 0;
  std::memcpy(&value, text.data() + from, sizeof value);
  return value;
}

/// A simulated processor that records the queried leaves.
class FakeProcessor {
 public:
  std::string vendor = "GenuineIntel";
  std::uint32_t lastLeaf = 13;
  bool hyperThreading = true;
  std::uint32_t cacheEax = 0;
  bool hasCpuid = true;
  std::uint32_t unansweredLeaf = 0xFFFFFFFFU;  // supported according to leaf 0, but without a result
  std::vector<std::uint32_t> queriedLeaves;

  std::uint32_t physicalCoresAmong(std::uint32_t processors) {
    return physicalCores(processors,
                         [this](std::uint32_t leaf, std::uint32_t subleaf) { return answer(leaf, subleaf); });
  }

 private:
  std::optional<CpuidRegisters> answer(std::uint32_t leaf, std::uint32_t subleaf) {
    queriedLeaves.push_back(leaf);
    EXPECT_EQ(subleaf, 0U);
    if (!hasCpuid || leaf == unansweredLeaf) return std::nullopt;
    CpuidRegisters registers;
    if (leaf == 0) {
      registers = {lastLeaf, fourCharacters(vendor, 0), fourCharacters(vendor, 8), fourCharacters(vendor, 4)};
    } else if (leaf == 1) {
      // without hyper-threading all other bits are set: only bit 28 may count
      registers.edx = hyperThreading ? 0x10000000U : 0xEFFFFFFFU;
    } else if (leaf == 4) {
      registers.eax = cacheEax;
    }
    return registers;
  }
};

constexpr std::uint32_t sharedByThreads(std::uint32_t threads) { return (threads - 1) << 14U; }

TEST(PhysicalCores, OneProcessorIsOneCoreWithoutACpuidQuery) {
  for (const std::uint32_t processors : {0U, 1U}) {
    FakeProcessor processor;
    EXPECT_EQ(processor.physicalCoresAmong(processors), 1U);
    EXPECT_TRUE(processor.queriedLeaves.empty());
  }
}

struct CountRow {
  const char* name;
  std::uint32_t processors;
  std::uint32_t cacheEax;
  std::uint32_t cores;
};

// clang-format off
const CountRow countRows[] = {
    {"one thread per core", 8, sharedByThreads(1), 8},
    {"two threads per core", 8, sharedByThreads(2), 4},
    {"four threads per core", 256, sharedByThreads(4), 64},
    {"two processors on one core", 2, sharedByThreads(2), 1},
    {"not divisible: rounded down", 7, sharedByThreads(2), 3},
    {"fewer processors than threads per core: never 0", 3, sharedByThreads(4), 1},
    {"largest field", 4096, sharedByThreads(4096), 1},
    {"largest field, exceeds the number of processors", 2, sharedByThreads(4096), 1},
    {"bits below and above the field are ignored", 8, 0xFC003FFFU | sharedByThreads(2), 4},
    {"largest number of processors", 0xFFFFFFFFU, sharedByThreads(2), 0x7FFFFFFFU},
};
// clang-format on

TEST(PhysicalCores, IntelCoresAreProcessorsDividedByThreadsPerCore) {
  for (const CountRow& row : countRows) {
    SCOPED_TRACE(row.name);
    FakeProcessor processor;
    processor.cacheEax = row.cacheEax;
    EXPECT_EQ(processor.physicalCoresAmong(row.processors), row.cores);
    EXPECT_EQ(processor.queriedLeaves, (std::vector<std::uint32_t>{0, 1, 4}));
  }
}

TEST(PhysicalCores, OtherVendorsCountEveryProcessorAsACore) {
  // the last three differ from Intel's vendor string in one register each
  for (const char* vendor :
       {"AuthenticAMD", "HygonGenuine", "            ", "genuineIntel", "GenuIneIntel", "GenuineIntem"}) {
    SCOPED_TRACE(vendor);
    FakeProcessor processor;
    processor.vendor = vendor;
    processor.cacheEax = sharedByThreads(2);
    EXPECT_EQ(processor.physicalCoresAmong(8), 8U);
    EXPECT_EQ(processor.queriedLeaves, std::vector<std::uint32_t>{0});
  }
}

TEST(PhysicalCores, WithoutHyperThreadingTheCacheLeafIsNotQueried) {
  FakeProcessor processor;
  processor.hyperThreading = false;
  processor.cacheEax = sharedByThreads(2);
  EXPECT_EQ(processor.physicalCoresAmong(8), 8U);
  EXPECT_EQ(processor.queriedLeaves, (std::vector<std::uint32_t>{0, 1}));
}

TEST(PhysicalCores, UnsupportedLeavesAreNotQueried) {
  for (const std::uint32_t lastLeaf : {0U, 1U, 2U, 3U}) {
    SCOPED_TRACE(lastLeaf);
    FakeProcessor processor;
    processor.lastLeaf = lastLeaf;
    processor.cacheEax = sharedByThreads(2);
    EXPECT_EQ(processor.physicalCoresAmong(8), 8U);
    EXPECT_EQ(processor.queriedLeaves, std::vector<std::uint32_t>{0});
  }
}

TEST(PhysicalCores, TheCacheLeafMayBeTheLastLeaf) {
  FakeProcessor processor;
  processor.lastLeaf = 4;
  processor.cacheEax = sharedByThreads(2);
  EXPECT_EQ(processor.physicalCoresAmong(8), 4U);
}

TEST(PhysicalCores, WithoutCpuidEveryProcessorCountsAsACore) {
  FakeProcessor processor;
  processor.hasCpuid = false;
  EXPECT_EQ(processor.physicalCoresAmong(8), 8U);
}

TEST(PhysicalCores, AnUnansweredLeafCountsAsOneThreadPerCore) {
  for (const std::uint32_t leaf : {1U, 4U}) {
    SCOPED_TRACE(leaf);
    FakeProcessor processor;
    processor.cacheEax = sharedByThreads(2);
    processor.unansweredLeaf = leaf;
    EXPECT_EQ(processor.physicalCoresAmong(8), 8U);
  }
}

// ------------------------------------------------------------------------------------- on the real processor
std::string vendorOfThisMachine() {
  const auto identification = ztcad::queryCpuid(0, 0);
  if (!identification) return {};
  std::string vendor(12, '\0');
  std::memcpy(&vendor[0], &identification->ebx, 4);
  std::memcpy(&vendor[4], &identification->edx, 4);
  std::memcpy(&vendor[8], &identification->ecx, 4);
  return vendor;
}

#if defined(__x86_64__) || defined(_M_X64)
TEST(Cpuid, ReturnsAPrintableVendorOnX86) {
  const std::string vendor = vendorOfThisMachine();
  ASSERT_EQ(vendor.size(), 12U);
  for (const char character : vendor)
    EXPECT_TRUE(std::isprint(static_cast<unsigned char>(character))) << vendor;
}

TEST(Cpuid, LeavesAfterTheLastHaveNoResult) {
  const auto identification = ztcad::queryCpuid(0, 0);
  ASSERT_TRUE(identification);
  EXPECT_TRUE(ztcad::queryCpuid(identification->eax, 0));
  EXPECT_FALSE(ztcad::queryCpuid(identification->eax + 1, 0));
  EXPECT_FALSE(ztcad::queryCpuid(0x7FFFFFFFU, 0));
}

TEST(Cpuid, EveryX64ProcessorHasTheFeatureLeaf) {
  const auto features = ztcad::queryCpuid(1, 0);
  ASSERT_TRUE(features);
  EXPECT_TRUE(features->edx & (1U << 26U)) << "64-bit processors have SSE2";
}
#endif

TEST(PhysicalCoreCount, IsBetweenOneAndTheNumberOfProcessors) {
  EXPECT_GE(ztParallel::physicalCoreCount(), 1U);
  EXPECT_LE(ztParallel::physicalCoreCount(), static_cast<std::uint32_t>(omp_get_num_procs()));
}

TEST(PhysicalCoreCount, EqualsTheNumberOfProcessorsExceptOnIntel) {
  if (vendorOfThisMachine() == "GenuineIntel") GTEST_SKIP() << "this machine has an Intel processor";
  EXPECT_EQ(ztParallel::physicalCoreCount(), static_cast<std::uint32_t>(omp_get_num_procs()));
}

}  // namespace
