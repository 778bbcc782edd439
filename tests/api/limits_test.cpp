#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "samples.h"

// Documents of extreme shape, processed on a thread with a small stack, as the threads of a host may have.

namespace {

void* runWork(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return nullptr;
}

void runOnSmallStack(std::function<void()> work) {
  constexpr std::size_t mebibyte = 1048576;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  constexpr std::size_t stack = 8 * mebibyte;  // instrumented functions need several times as much
#else
  constexpr std::size_t stack = mebibyte;
#endif
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, stack);
  pthread_t thread = {};
  if (pthread_create(&thread, &attributes, runWork, &work) != 0) throw std::runtime_error("no thread");
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

std::string nestedStructures(int levels) {
  return "<GMD>" + repeated("<structure name='S'>", levels) + repeated("</structure>", levels) + "</GMD>";
}

/// Entity declarations each of which expands to ten times the length of the one before.
std::string billionLaughs() {
  std::string text = "<!DOCTYPE GMD [<!ENTITY l0 'ha'>";
  for (int i = 1; i < 10; ++i)
    text += "<!ENTITY l" + std::to_string(i) + " '" + repeated("&l" + std::to_string(i - 1) + ";", 10) + "'>";
  return text + "]><GMD><point name='&l9;'/></GMD>";
}

std::string quadraticBlowUp() {
  return "<!DOCTYPE GMD [<!ENTITY e '" + std::string(100000, 'e') + "'>]><GMD><point name='" +
         repeated("&e;", 100000) + "'/></GMD>";
}

struct Row {
  const char* name;
  std::string xml;
  int code;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class SmallStack : public testing::TestWithParam<Row> {};

TEST_P(SmallStack, IsEnough) {
  const TemporaryFiles files;
  const std::string file = files.put("document.xml", GetParam().xml);
  runOnSmallStack([&] {
    const Loaded loaded = loadFile(file);
    EXPECT_EQ(loaded.code, GetParam().code);
    const Parsed parsed = parse(GetParam().xml);
    EXPECT_EQ(parsed.parsed, GetParam().code != 110) << parsed.message;
    SaveGMDDocument(loaded.document.get(), files.path("saved.xml"));
    EXPECT_EQ(loadFile(files.path("saved.xml")).code, GetParam().code == 110 ? 0 : GetParam().code);
    textOf(loaded.document.get(), true);
    textOf(loaded.document.get(), false);
  });
}

// A question mark inside an instruction is not plain XML, so the general reader reads the document.
INSTANTIATE_TEST_SUITE_P(
    Rows, SmallStack,
    testing::Values(
        Row{"DeepestStructures", nestedStructures(255), 0},
        Row{"DeepestStructuresThroughDom", nestedStructures(255) + "<?end a?b?>", 0},
        Row{"OneStructureTooDeep", nestedStructures(256), 110},
        Row{"OneStructureTooDeepThroughDom", nestedStructures(256) + "<?end a?b?>", 110},
        Row{"DeepestUnknownElements", "<GMD>" + repeated("<x>", 255) + repeated("</x>", 255) + "</GMD>", 0},
        Row{"AMillionOpenTags", "<GMD>" + repeated("<x>", 1000000), 110},
        Row{"AMillionStructures", nestedStructures(1000000), 110},
        Row{"AMillionParentheses", "<!DOCTYPE GMD [<!ELEMENT GMD " + repeated("(", 1000000), 110},
        Row{"BillionLaughs", billionLaughs(), 110}, Row{"QuadraticBlowUp", quadraticBlowUp(), 110},
        Row{"ExternalEntity", "<!DOCTYPE GMD [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><GMD>&e;</GMD>", 110},
        Row{"AMillionAttributes",
            "<GMD><point name='P' center='1'" + repeated(" a='1'", 1000000) + "/></GMD>", 0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Limits, FunctionsNestStructuresAsDeepAsAFile) {
  runOnSmallStack([] {
    ztCAD_Structure* const outermost = make<ztCAD_Structure>("S");
    ztCAD_Structure* innermost = outermost;
    int levels = 1;
    for (; levels < 1000; ++levels) {
      ztCAD_Structure* const next = make<ztCAD_Structure>("S");
      if (addStructureToStructure(next, innermost)) break;
      innermost = next;
    }
    EXPECT_EQ(levels, 255);
    const Document document = newDocument();
    EXPECT_FALSE(addStructureToDoc(outermost, document.get()));
    EXPECT_TRUE(checkGMDDocument(document.get()));
    const Parsed again = parse(savedBytes(document.get()));
    EXPECT_TRUE(again.parsed);
    textOf(document.get(), true);
  });
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // which end the program

/// A line of the process's status, in bytes.
rlim_t statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.compare(0, field.size(), field) == 0) return std::stoull(line.substr(field.size() + 1)) * 1024;
  throw std::runtime_error("no " + field);
}

void limitAddressSpace(rlim_t bytes) {
  rlimit limit = {};
  getrlimit(RLIMIT_AS, &limit);
  limit.rlim_cur = bytes;
  if (setrlimit(RLIMIT_AS, &limit) != 0) throw std::runtime_error("the address space cannot be limited");
}

TEST(Limits, FilesThatMemoryCannotHoldAreRefusedWithoutReading) {
  const TemporaryFiles files;
  constexpr off_t gibibyte = 1073741824;
  const std::string file = files.put("document.xml", "<GMD/>");
  for (const off_t size : {gibibyte, 3 * gibibyte, 5 * gibibyte}) {
    if (truncate(file.c_str(), size) != 0)
      GTEST_SKIP() << "the file system does not support a sparse file of " << size << " bytes";
    const Document document = newDocument();
    addPointToDoc(pointNamed("P"), document.get());
    const rlim_t before = statusBytes("VmHWM:");
    limitAddressSpace(statusBytes("VmSize:") + gibibyte / 2);
    const Loaded loaded = loadFile(file);
    std::int32_t code = -1;
    bool fault = true;
    UpdateGMDDoc(document.get(), file, code, fault);
    limitAddressSpace(RLIM_INFINITY);
    EXPECT_EQ(loaded.code, 110) << size;
    EXPECT_EQ(code, 110);
    EXPECT_FALSE(fault);
    EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"P"});
    EXPECT_LT(statusBytes("VmHWM:"), before + 100000000) << size;
  }
}

#endif

}  // namespace
