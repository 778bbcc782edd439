#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <ztCAD/ztCAD.h>
#include <ztCAD/ztCAD_c.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "large_document.h"
#include "temporary_files.h"

// Documents of gigabytes. They need much memory, disk (in the folder TMPDIR) and time, so they run only where
// the environment variable ZTCAD_TEST_LARGE is set. Each step runs in a process of its own, whose peak is its
// own.

namespace {

constexpr std::uint64_t fourGigabytes = 4300000000;  // more than 32 bits count
constexpr std::uint64_t comparedSize = 400000000;
constexpr std::int64_t longestText = 1073741759;  // characters of a name; one more is refused

class LargeDocuments : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::getenv("ZTCAD_TEST_LARGE")) GTEST_SKIP() << "set ZTCAD_TEST_LARGE for documents of gigabytes";
  }
};

int failures() { return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count(); }

/// Runs a step in a child process, in which failed expectations fail this process, too.
void inChild(const std::function<void()>& step) {
  std::fflush(nullptr);
  const int earlier = failures();
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      step();
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    std::fflush(nullptr);
    _exit(failures() > earlier ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
}

/// A line of the process's status, in bytes.
double statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.compare(0, field.size(), field) == 0) return 1024 * std::stod(line.substr(field.size() + 1));
  throw std::runtime_error("no " + field);
}

/// Processor time of this process, without that of the system.
double userSeconds() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) + 1e-6 * static_cast<double>(usage.ru_utime.tv_usec);
}

double secondsOf(const std::function<void()>& work) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double sizeOf(const std::string& file) { return static_cast<double>(std::filesystem::file_size(file)); }

/// Prints the figures of a step.
void print(const char* step, double bytes, double seconds, double peak) {
  std::printf("%-18s %5.2f GB in %6.2f s, %5.2f s/GB, peak %5.2f GB, %4.2f times the text\n", step,
              bytes / 1e9, seconds, seconds / (bytes / 1e9), peak / 1e9, peak / bytes);
}

void put(const LargeDocument& document, const std::string& file, std::string_view addition) {
  PiecewiseFile target(file, "wb");
  document.write([&target](std::string_view bytes) { target.write(bytes); }, addition);
  target.sync();
}

/// Reads a file, which is then in the system's cache if there is memory: loads are measured, not disks.
void warm(const std::string& file) {
  PiecewiseFile source(file, "rb");
  std::string piece(1 << 20, '\0');
  while (source.read(piece)) {
  }
}

std::string nameOf(const ztCAD_Base* element) {
  char name[100] = {};
  ztCAD_getName(element, name, sizeof name);
  return name;
}

void expectContent(ztCAD_GMDDocument* loaded, const LargeDocument& document) {
  const ztCAD_Base* const solid = ztCAD_getFromDoc(loaded, ztCAD_ElementTriangle, 0);
  const ztCAD_Vertices* const vertices = ztCAD_getVertices(solid);
  const ztCAD_Faces* const faces = ztCAD_getFaces(solid);
  ASSERT_EQ(static_cast<std::uint64_t>(ztCAD_getVertexCount(vertices)), document.vertices());
  ASSERT_EQ(static_cast<std::uint64_t>(ztCAD_getFacetCount(faces)), document.facets());
  for (const std::uint64_t i : {std::uint64_t{0}, document.vertices() / 2, document.vertices() - 1})
    EXPECT_EQ(
        0, std::memcmp(ztCAD_getVertexData(vertices) + 3 * i, document.vertex(i).data(), 3 * sizeof(double)));
  for (const std::uint64_t i : {std::uint64_t{0}, document.facets() / 2, document.facets() - 1})
    EXPECT_EQ(0, std::memcmp(ztCAD_getFacetData(faces) + 3 * i, document.facet(i).data(),
                             3 * sizeof(std::uint32_t)));
  ztCAD_Base* const structure = ztCAD_getFromDoc(loaded, ztCAD_ElementStructure, 0);
  EXPECT_EQ(nameOf(structure), "end");
  auto* const holder = dynamic_cast<ztCAD_commonStructure*>(structure);
  ASSERT_EQ(ztCAD_countInStructure(holder, ztCAD_ElementPoint), 3);
  EXPECT_EQ(nameOf(ztCAD_getFromStructure(holder, ztCAD_ElementPoint, 2)), "last");
}

void expectSaved(const std::string& file, const LargeDocument& document) {
  PiecewiseFile saved(file, "rb");
  bool isEqual = true;
  document.write([&](std::string_view bytes) { isEqual = isEqual && saved.goesOnWith(bytes); });
  EXPECT_TRUE(isEqual && saved.isAtEnd());
}

constexpr std::string_view unknown = "unknown=\"x\" ";

/// Where a child process leaves the processor time of its load in seconds.
class SharedSeconds {
 public:
  SharedSeconds() {
    void* const memory =
        mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("no shared memory");
    m_seconds = static_cast<double*>(memory);
  }
  SharedSeconds(const SharedSeconds&) = delete;
  SharedSeconds& operator=(const SharedSeconds&) = delete;
  ~SharedSeconds() { munmap(m_seconds, sizeof(double)); }

  double& value() { return *m_seconds; }

 private:
  double* m_seconds;
};

/// Loads a document and saves it again.
void loadAndSave(const std::string& file, const std::string& target, const LargeDocument& document,
                 double mostMemory, double& userSecondsOfLoad) {
  const double size = sizeOf(file);
  warm(file);
  const double before = statusBytes("VmHWM:");
  const double userBefore = userSeconds();
  ztCAD_GMDDocument* loaded = nullptr;
  ztCAD_Outcome outcome;
  const double seconds = secondsOf([&] { loaded = ztCAD_loadDocument(file.c_str(), &outcome); });
  userSecondsOfLoad = userSeconds() - userBefore;
  const double peak = statusBytes("VmHWM:") - before;
  print("load", size, seconds, peak);
  EXPECT_EQ(outcome.code, 0) << outcome.message;
  EXPECT_FALSE(outcome.fault);
  EXPECT_LE(peak, mostMemory * size);
  ASSERT_NE(loaded, nullptr);
  expectContent(loaded, document);
  bool isSaved = false;
  const double saveSeconds =
      secondsOf([&] { isSaved = ztCAD_saveDocument(loaded, target.c_str(), &outcome); });
  EXPECT_TRUE(isSaved) << outcome.message;
  print("save to a disk", sizeOf(target), saveSeconds, statusBytes("VmHWM:") - before);
  expectSaved(target, document);
  ztCAD_endDocument(loaded);
}

/// The line of the last element, from 1.
std::int64_t lineOfLast(const LargeDocument& document) {
  constexpr std::int64_t others = 13;
  return others + static_cast<std::int64_t>(document.vertices() + document.facets());
}

void review(const std::string& file, const LargeDocument& document) {
  const double size = sizeOf(file);
  const double before = statusBytes("VmHWM:");
  ztCAD_Review* review = nullptr;
  ztCAD_Outcome outcome;
  const double seconds = secondsOf([&] { review = ztCAD_reviewFile(file.c_str(), -1, &outcome); });
  print("review", size, seconds, statusBytes("VmHWM:") - before);
  EXPECT_EQ(outcome.code, 0) << outcome.message;
  const std::int64_t count = ztCAD_findingCount(review);
  ASSERT_GE(count, 1);
  const ztCAD_Finding& finding = *ztCAD_findingAt(review, count - 1);  // the others are notes
  EXPECT_STREQ(finding.rule, "unknown-attribute");
  EXPECT_STREQ(finding.path, "/GMD/structure[1]/point[3]/@unknown");
  const std::string rest =
      std::string(unknown) + "method=\"pointXYZ\" name=\"last\"/>\n   </structure>\n</GMD>\n";
  EXPECT_EQ(finding.place.offset, static_cast<std::int64_t>(size) - static_cast<std::int64_t>(rest.size()));
  EXPECT_EQ(finding.place.column, static_cast<std::int64_t>(LargeDocument::beforeLast().size()) + 1);
  EXPECT_EQ(finding.place.line, lineOfLast(document));
  ztCAD_endReview(review);
}

void printText(const std::string& file) {
  const double size = sizeOf(file);
  const double before = statusBytes("VmHWM:");
  ztCAD_GMDDocument* const loaded = ztCAD_loadDocument(file.c_str(), nullptr);
  std::int64_t length = 0;
  const double seconds = secondsOf([&] { length = GMDDocumentToString_nostl(loaded, false, nullptr, 0); });
  print("print", size, seconds, statusBytes("VmHWM:") - before);
  EXPECT_GT(length, static_cast<std::int64_t>(0.99 * size));
}

/// The same steps with a document of any size.
/// @return user time of a load for each byte
double runSteps(std::uint64_t bytes, double mostMemory) {
  const TemporaryFiles files;
  const std::string file = files.path("document.xml");
  const LargeDocument document(bytes);
  SharedSeconds seconds;
  inChild([&] { put(document, file, unknown); });
  // not measured: a virtual machine may get memory from its host only now
  inChild([&] { EXPECT_NE(ztCAD_loadDocument(file.c_str(), nullptr), nullptr); });
  inChild([&] { loadAndSave(file, files.path("saved.xml"), document, mostMemory, seconds.value()); });
  std::filesystem::remove(files.path("saved.xml"));
  inChild([&] { review(file, document); });
  inChild([&] { printText(file); });
  return seconds.value() / sizeOf(file);
}

// Without the environment variable: the steps themselves, with a document that is not large.
TEST(SmallDocuments, AreWhatLargeOnesAreMadeOf) { runSteps(3000000, 100); }

TEST_F(LargeDocuments, LoadInTheMemoryOfTheirGeometryAndAreSavedAndReviewed) {
  const double compared = runSteps(comparedSize, 1.8);
  const double large = runSteps(fourGigabytes, 1.8);
  constexpr double noise = 1.3;
  EXPECT_LT(large, noise * compared);
  std::printf("user time of a load: %.2f s/GB, of a smaller document %.2f s/GB\n", 1e9 * large,
              1e9 * compared);
}

/// A document with a point whose name has so many characters.
std::string withName(std::int64_t length) {
  std::string text = "<GMD>\n<point center='1, 2, 3' name='";
  text.append(static_cast<std::size_t>(length), 'n');
  return text + "'/>\n</GMD>";
}

TEST_F(LargeDocuments, ANameMayBeAsLongAsAQString) {
  inChild([] {
    const std::string text = withName(longestText);
    ztCAD_Outcome outcome;
    ztCAD_GMDDocument* const document =
        ztCAD_loadDocumentFromText(text.data(), static_cast<std::int64_t>(text.size()), &outcome);
    ASSERT_NE(document, nullptr) << outcome.message;
    EXPECT_EQ(ztCAD_getName(ztCAD_getFromDoc(document, ztCAD_ElementPoint, 0), nullptr, 0), longestText);
    std::int64_t saved = 0;
    const ztCAD_WriteBytes count = [](const char*, std::int64_t size, void* total) {
      *static_cast<std::int64_t*>(total) += size;
      return true;
    };
    EXPECT_TRUE(ztCAD_saveDocumentTo(document, count, &saved, &outcome)) << outcome.message;
    EXPECT_GT(saved, longestText);
  });
}

TEST_F(LargeDocuments, ALongerNameIsRefusedWithItsPlace) {
  inChild([] {
    const std::string text = withName(longestText + 1);
    ztCAD_Outcome outcome;
    ztCAD_GMDDocument* const document =
        ztCAD_loadDocumentFromText(text.data(), static_cast<std::int64_t>(text.size()), &outcome);
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(outcome.code, 110);
    EXPECT_STREQ(outcome.message, "text too long");
    EXPECT_EQ(outcome.line, 2);
    EXPECT_EQ(outcome.column, 31);
  });
}

TEST_F(LargeDocuments, AnErrorInAColumnThatDoesNotFitIsInTheLastColumn) {
  inChild([] {
    constexpr std::int64_t column = 2200000000;
    const std::string text = std::string(column, ' ') + "<GMD></gmd>";
    ztCAD_Outcome outcome;
    const auto size = static_cast<std::int64_t>(text.size());
    EXPECT_EQ(ztCAD_loadDocumentFromText(text.data(), size, &outcome), nullptr);
    EXPECT_EQ(outcome.code, 110);
    EXPECT_STREQ(outcome.message, "tag mismatch");
    EXPECT_EQ(outcome.line, 1);
    EXPECT_EQ(outcome.column, INT32_MAX);
    ztCAD_Review* const review = ztCAD_reviewText(text.data(), size, -1, nullptr);
    ASSERT_EQ(ztCAD_findingCount(review), 1);
    EXPECT_GT(ztCAD_findingAt(review, 0)->place.column, column);
  });
}

TEST_F(LargeDocuments, AFileOfZerosIsReadAndRefused) {
  const TemporaryFiles files;
  const std::string file = files.put("document.xml", "<GMD/>");
  for (const std::uintmax_t gibibytes : {1, 3, 5}) {
    std::filesystem::resize_file(file, gibibytes << 30U);
    inChild([&] {
      ztCAD_Outcome outcome;
      EXPECT_EQ(ztCAD_loadDocument(file.c_str(), &outcome), nullptr);
      EXPECT_EQ(outcome.code, 110);
      EXPECT_STREQ(outcome.message, "NUL character");
      EXPECT_EQ(outcome.column, 7);
    });
  }
}

}  // namespace
