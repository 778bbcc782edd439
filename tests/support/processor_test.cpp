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

/// A made-up processor that notes what it was asked.
class Processor {
 public:
  std::string vendor = "GenuineIntel";
  std::uint32_t lastLeaf = 13;
  bool hyperThreading = true;
  std::uint32_t cacheEax = 0;
  bool hasCpuid = true;
  std::uint32_t silentLeaf = 0xFFFFFFFFU;  // claimed, but not answered
  std::vector<std::uint32_t> asked;

  std::uint32_t coresOf(std::uint32_t processors) {
    return physicalCores(processors,
                         [this](std::uint32_t leaf, std::uint32_t subleaf) { return answer(leaf, subleaf); });
  }

 private:
  std::optional<CpuidRegisters> answer(std::uint32_t leaf, std::uint32_t subleaf) {
    asked.push_back(leaf);
    EXPECT_EQ(subleaf, 0U);
    if (!hasCpuid || leaf == silentLeaf) return std::nullopt;
    CpuidRegisters registers;
    if (leaf == 0) {
      registers = {lastLeaf, fourCharacters(vendor, 0), fourCharacters(vendor, 8), fourCharacters(vendor, 4)};
    } else if (leaf == 1) {
      // all other bits set: only bit 28 may count
      registers.edx = hyperThreading ? 0x10000000U : 0xEFFFFFFFU;
    } else if (leaf == 4) {
      registers.eax = cacheEax;
    }
    return registers;
  }
};

constexpr std::uint32_t sharedBy(std::uint32_t threads) { return (threads - 1) << 14U; }

TEST(PhysicalCores, OneProcessorIsOneCoreWithoutAnyQuery) {
  for (const std::uint32_t processors : {0U, 1U}) {
    Processor processor;
    EXPECT_EQ(processor.coresOf(processors), 1U);
    EXPECT_TRUE(processor.asked.empty());
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
    {"one thread for each core", 8, sharedBy(1), 8},
    {"two threads for each core", 8, sharedBy(2), 4},
    {"four threads for each core", 256, sharedBy(4), 64},
    {"two processors on one core", 2, sharedBy(2), 1},
    {"uneven: the quotient is cut", 7, sharedBy(2), 3},
    {"fewer processors than threads of a core: never 0", 3, sharedBy(4), 1},
    {"largest field", 4096, sharedBy(4096), 1},
    {"largest field, too large for the machine", 2, sharedBy(4096), 1},
    {"bits below and above the field do not count", 8, 0xFC003FFFU | sharedBy(2), 4},
    {"largest number of processors", 0xFFFFFFFFU, sharedBy(2), 0x7FFFFFFFU},
};
// clang-format on

TEST(PhysicalCores, ThreadsOfACoreDivideTheProcessorsOnIntel) {
  for (const CountRow& row : countRows) {
    SCOPED_TRACE(row.name);
    Processor processor;
    processor.cacheEax = row.cacheEax;
    EXPECT_EQ(processor.coresOf(row.processors), row.cores);
    EXPECT_EQ(processor.asked, (std::vector<std::uint32_t>{0, 1, 4}));
  }
}

TEST(PhysicalCores, OtherVendorsHaveAsManyCoresAsProcessors) {
  // the last three differ from the Intel name in one register each
  for (const char* vendor :
       {"AuthenticAMD", "HygonGenuine", "            ", "genuineIntel", "GenuIneIntel", "GenuineIntem"}) {
    SCOPED_TRACE(vendor);
    Processor processor;
    processor.vendor = vendor;
    processor.cacheEax = sharedBy(2);
    EXPECT_EQ(processor.coresOf(8), 8U);
    EXPECT_EQ(processor.asked, std::vector<std::uint32_t>{0});
  }
}

TEST(PhysicalCores, WithoutHyperThreadingTheCacheIsNotAsked) {
  Processor processor;
  processor.hyperThreading = false;
  processor.cacheEax = sharedBy(2);
  EXPECT_EQ(processor.coresOf(8), 8U);
  EXPECT_EQ(processor.asked, (std::vector<std::uint32_t>{0, 1}));
}

TEST(PhysicalCores, LeavesThatTheProcessorLacksAreNotAsked) {
  for (const std::uint32_t lastLeaf : {0U, 1U, 2U, 3U}) {
    SCOPED_TRACE(lastLeaf);
    Processor processor;
    processor.lastLeaf = lastLeaf;
    processor.cacheEax = sharedBy(2);
    EXPECT_EQ(processor.coresOf(8), 8U);
    EXPECT_EQ(processor.asked, std::vector<std::uint32_t>{0});
  }
}

TEST(PhysicalCores, LastLeafMayBeTheCacheLeaf) {
  Processor processor;
  processor.lastLeaf = 4;
  processor.cacheEax = sharedBy(2);
  EXPECT_EQ(processor.coresOf(8), 4U);
}

TEST(PhysicalCores, AProcessorWithoutCpuidHasAsManyCoresAsProcessors) {
  Processor processor;
  processor.hasCpuid = false;
  EXPECT_EQ(processor.coresOf(8), 8U);
}

TEST(PhysicalCores, AnUnansweredLeafCountsAsOneThreadForEachCore) {
  for (const std::uint32_t leaf : {1U, 4U}) {
    SCOPED_TRACE(leaf);
    Processor processor;
    processor.cacheEax = sharedBy(2);
    processor.silentLeaf = leaf;
    EXPECT_EQ(processor.coresOf(8), 8U);
  }
}

// ------------------------------------------------------------------------------------------- on the real processor
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
TEST(Cpuid, NamesAVendorOnX86) {
  const std::string vendor = vendorOfThisMachine();
  ASSERT_EQ(vendor.size(), 12U);
  for (const char character : vendor)
    EXPECT_TRUE(std::isprint(static_cast<unsigned char>(character))) << vendor;
}

TEST(Cpuid, LeavesBeyondTheLastAreNotAnswered) {
  const auto identification = ztcad::queryCpuid(0, 0);
  ASSERT_TRUE(identification);
  EXPECT_TRUE(ztcad::queryCpuid(identification->eax, 0));
  EXPECT_FALSE(ztcad::queryCpuid(identification->eax + 1, 0));
  EXPECT_FALSE(ztcad::queryCpuid(0x7FFFFFFFU, 0));
}

TEST(Cpuid, X86ProcessorsOf64BitsHaveTheFeatureLeaf) {
  const auto features = ztcad::queryCpuid(1, 0);
  ASSERT_TRUE(features);
  EXPECT_TRUE(features->edx & (1U << 26U)) << "64-bit processors have SSE2";
}
#endif

TEST(PhysicalCoreCount, LiesBetweenOneAndTheNumberOfProcessors) {
  EXPECT_GE(ztParallel::physicalCoreCount(), 1U);
  EXPECT_LE(ztParallel::physicalCoreCount(), static_cast<std::uint32_t>(omp_get_num_procs()));
}

TEST(PhysicalCoreCount, IsTheNumberOfProcessorsOnAnythingButIntel) {
  if (vendorOfThisMachine() == "GenuineIntel") GTEST_SKIP() << "this machine is one of Intel";
  EXPECT_EQ(ztParallel::physicalCoreCount(), static_cast<std::uint32_t>(omp_get_num_procs()));
}

}  // namespace
