/// Whole documents through the library's exported functions, compared with an implementation by Qt's own
/// calls and with a hand-tuned one.
///
///   document_benchmark [--quick] [--all-qt] [--markdown] [--folder <folder>] [--only <text>]
///                      [--mixed <file>] [--mesh <facets>]
///
///   --quick     small sizes only, to see that everything runs
///   --all-qt    run the Qt baseline at every size, even where it takes minutes and gigabytes
///   --markdown  print Markdown tables
///   --folder    parent of the folder for the files; by default in memory, where no save waits for a disk
///   --only      run only the cases whose name contains this text
///   --mixed     document to repeat for the mixed one; by default a robot arm, made by code if its file is
///               absent
///   --mesh      measure only a mesh of so many facets: a hundred million make a document of four gigabytes,
///               for which `--folder` should name a folder on disk
///
/// Ends with exit code 1 if a run fails and, unless --quick is given, if a target is missed. The cases after
/// a failed one run all the same.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "baseline_run.h"
#include "library_run.h"
#include "mixed_document.h"
#include "plain_structs.h"
#include "program_run.h"
#include "table.h"

namespace {

using namespace benchmarks;

struct Options {
  bool quick = false;
  bool allQt = false;
  bool markdown = false;
  std::string only;
  std::string mixed;       // file of the mixed document; empty: the robot arm
  std::size_t facets = 0;  // of the only mesh to measure; 0: all cases
  std::string folder = std::filesystem::is_directory("/dev/shm")
                           ? "/dev/shm"
                           : std::filesystem::temp_directory_path().string();
};

/// Removes an earlier file before the save: freeing its blocks must not be timed.
template <typename Save>
std::function<Measurement()> intoNewFile(const std::string& file, Save save) {
  return [=] {
    std::filesystem::remove(file);
    return save();
  };
}

class Benchmark {
 public:
  explicit Benchmark(const Options& options) : m_options(options), m_documents(options.folder) {}

  const Results& run() {
    if (m_options.facets > 0) {
      runMesh(m_documents.make(Shape::Mesh, m_options.facets / 2));
      return m_results;
    }
    using Sizes = std::vector<std::size_t>;
    const Sizes vertices = m_options.quick ? Sizes{1350, 13500} : Sizes{13500, 135000, 1000000};
    const Sizes points = m_options.quick ? Sizes{1000, 10000} : Sizes{10000, 100000, 1000000};
    for (const std::size_t size : vertices)
      runMesh(m_documents.make(Shape::Mesh, size));
    for (const std::size_t size : points)
      runPoints(size);
    for (const std::size_t size : points)
      runBuilding(size);
    runMixed();
    runProgram(m_documents.make(Shape::Mesh, vertices.back()),
               m_documents.make(Shape::DifferentNames, points.front()));
    runDiff("mesh", m_documents.make(Shape::Mesh, vertices.back()));
    runDiff("points", m_documents.make(Shape::DifferentNames, points.back()));
    return m_results;
  }

  /// Whether a run failed or the implementations did not agree.
  bool failed() const { return m_failed; }

 private:
  /// The Qt baseline, omitted above the size `largest` because it takes too long there.
  std::function<Measurement()> qtUpTo(std::size_t largest, std::size_t size,
                                      const std::function<Measurement()>& run) const {
    return m_options.allQt || size <= largest ? run : nullptr;
  }

  /// Empty if a run failed. The other cases run all the same.
  std::optional<Row> measured(const std::string& name, const Implementations& implementations) {
    try {
      return measure(name, implementations);
    } catch (const std::exception& error) {
      reportFailure(error.what());
      return {};
    }
  }

  void reportFailure(const std::string& message) {
    std::cerr << "document_benchmark: " << message << "\n";
    m_failed = true;
  }

  bool isSelected(const std::string& name) const { return name.find(m_options.only) != std::string::npos; }

  void add(const std::string& name, const Document& document, MemoryKind memory,
           const Implementations& implementations) {
    if (!isSelected(name)) return;
    std::optional<Row> row = measured(name, implementations);
    if (!row) return;
    row->size = document.size;
    row->bytes = document.bytes;
    row->memory = memory;
    m_results.add(*row);
  }

  void addWithoutFile(const std::string& name, std::size_t size, const Implementations& implementations) {
    if (!isSelected(name)) return;
    std::optional<Row> row = measured(name, implementations);
    if (!row) return;
    row->size = size;
    m_results.add(*row);
  }

  /// There is no Qt baseline for templates, references and mixed documents.
  static bool isKnownToQt(const Document& document) {
    return document.shape != Shape::Templates && document.shape != Shape::References &&
           document.shape != Shape::Mixed;
  }

  void runLoad(const std::string& name, const Document& document) {
    Implementations implementations;
    implementations.library = [&] { return libraryLoad(document); };
    implementations.reference = [&] { return loadWithReference(document); };
    if (isKnownToQt(document))
      implementations.qt = qtUpTo(1000000, document.size, [&] { return loadWithQt(document); });
    add(name + ", load", document, MemoryKind::Load, implementations);
  }

  /// Compares the library with itself: the same elements in other forms of XML, and in the plain one.
  void runForms(const std::string& name, const Document& document) {
    for (const auto& [form, suffix] : forms) {
      const std::string row = name + suffix;
      if (!isSelected(row)) continue;
      const Document other = Documents::inForm(form, document);
      std::optional<Row> formRow =
          measured(row, {[&] { return libraryLoad(other); }, {}, [&] { return libraryLoad(document); }});
      if (!formRow) continue;
      formRow->size = document.size;
      formRow->bytes = other.bytes;
      formRow->referenceBytes = document.bytes;
      m_results.add(*formRow);
    }
  }

  /// Compares a review with a load of the same document.
  void runReview(const std::string& name, const Document& document) {
    add(name + ", review", document, MemoryKind::Load,
        {[&] { return libraryReview(document); }, {}, [&] { return libraryLoad(document); }});
  }

  /// Large documents of one kind are not compared: smaller ones of it are.
  bool areSavesEqual(const Document& document) const {
    constexpr std::size_t largestToCompare = 100000;
    if (document.shape != Shape::Mixed && document.size > largestToCompare) return true;
    const std::string file = m_documents.scratch();
    return inChild([&] { return compareSaves(document, file, file + ".reference"); }).succeeded;
  }

  void runSave(const std::string& name, const Document& document) {
    if (!isSelected(name + ", save")) return;
    const std::string file = m_documents.scratch();
    if (!areSavesEqual(document))
      return reportFailure(name + ": the library and the reference save different documents");
    Implementations implementations;
    implementations.library = intoNewFile(file, [&] { return librarySave(document, file); });
    if (isKnownToQt(document))
      implementations.qt =
          qtUpTo(200000, document.size, intoNewFile(file, [&] { return saveWithQt(document, file); }));
    implementations.reference = intoNewFile(file, [&] { return saveWithReference(document, file); });
    add(name + ", save", document, MemoryKind::Save, implementations);
  }

  void runMesh(const Document& mesh) {
    runLoad("mesh", mesh);
    runReview("mesh", mesh);
    if (m_options.facets == 0) runForms("mesh, load", mesh);  // it makes them in memory
    runSave("mesh", mesh);
  }

  void runPoints(std::size_t size) {
    const Document& points = m_documents.make(Shape::DifferentNames, size);
    runLoad("points", points);
    runReview("points", points);
    runForms("points, load", points);
    runSave("points", points);
    const Document& oneName = m_documents.make(Shape::SameName, size);
    runLoad("points with one name", oneName);
    runReview("points with one name", oneName);
    runUnify(size);
    const Document& structures = m_documents.make(Shape::Structures, size);
    runLoad("points in structures", structures);
    runSave("points in structures", structures);
    runCheck("points in structures, check", structures);
    const Document& templates = m_documents.make(Shape::Templates, size);
    runLoad("template points", templates);
    runSave("template points", templates);
    runCheck("template points, check", templates);
    const Document& references = m_documents.make(Shape::References, size);
    runLoad("references to points", references);
    runSave("references to points", references);
    runDelete(points);
  }

  void runMixed() {
    if (!isSelected("mixed, load") && !isSelected("mixed, save")) return;
    std::string file = m_options.mixed;
    if (file.empty() && std::filesystem::exists(ZTCAD_BENCHMARK_ARM)) file = ZTCAD_BENCHMARK_ARM;
    const std::string text = file.empty() ? generatedArm() : textOf(file);
    const std::size_t copies = m_options.quick ? 20 : usualCopies(text);
    std::cout << "The mixed document holds " << (file.empty() ? "an arm made by code" : file) << " " << copies
              << " times.\n";
    const Document document = m_documents.makeMixed(text, copies);
    runLoad("mixed", document);
    runSave("mixed", document);
  }

  void runUnify(std::size_t size) {
    const std::string file = m_documents.scratch();
    const char* const first = "points with one name, first save";
    const char* const second = "points with one name, second save";
    const char* const renaming = "points with one name, renaming (first - second)";
    Implementations implementations;
    implementations.library = intoNewFile(file, [&] { return libraryUnify(size, SaveOrder::First, file); });
    addWithoutFile(first, size, implementations);
    implementations.library = intoNewFile(file, [&] { return libraryUnify(size, SaveOrder::Second, file); });
    addWithoutFile(second, size, implementations);
    const Row* const firstRow = m_results.largest(first);
    const Row* const secondRow = m_results.largest(second);
    if (!firstRow || !secondRow || firstRow->size != size || secondRow->size != size) return;
    const std::optional<Row> plain = measured(renaming, {[&] { return plainUnify(size); }, {}, {}});
    if (!plain) return;
    Row names = *firstRow;
    names.name = renaming;
    names.library.seconds -= secondRow->library.seconds;
    names.reference = plain->library;
    m_results.add(names);
  }

  /// Once with the caches as the previous check left them, and once with cold caches. Only the cold times
  /// show growth: a small document fits into the caches, a large one does not.
  void runCheck(const std::string& name, const Document& document) {
    addWithoutFile(name, document.size, {[&] { return libraryCheck(document, nullptr); }, {}, {}});
    addWithoutFile(name + " (cold)", document.size,
                   {[&] { return libraryCheck(document, evictCaches); }, {}, {}});
  }

  void runDelete(const Document& points) {
    constexpr std::size_t records = 1000000;
    const auto plain = [&] { return plainDelete(points); };
    addWithoutFile("points, delete", points.size, {[&] { return libraryDelete(points, 0); }, {}, plain});
    addWithoutFile("points, delete while 10^6 records exist", points.size,
                   {[&] { return libraryDelete(points, records); }, {}, plain});
  }

  void runBuilding(std::size_t count) {
    addWithoutFile(
        "vertices, build", count,
        {[&] { return libraryBuildVertices(count); }, {}, [&] { return plainBuildVertices(count); }});
    addWithoutFile("points, build", count,
                   {[&] { return libraryBuildPoints(count); }, {}, [&] { return plainBuildPoints(count); }});
  }

  /// The program ztcad, compared with itself and with a bare load.
  void runProgram(const Document& mesh, const Document& points) {
    constexpr int documents = 500;
    const std::string folder = folderOfLinks(points, documents);
    addWithoutFile("program, check with two jobs (reference: one)", documents,
                   {[&] { return programCheck(folder, 2); }, {}, [&] { return programCheck(folder, 1); }});
    add("program, info (reference: a load)", mesh, MemoryKind::NotReported,
        {[&] { return programInfo(mesh); }, {}, [&] { return programLoad(mesh); }});
    add("program, view (reference: a load)", mesh, MemoryKind::NotReported,
        {[&] { return programView(mesh); }, {}, [&] { return programLoad(mesh); }});
  }

  void runDiff(const std::string& name, const Document& document) {
    const std::string row = name + ", diff of two (reference: a load of one)";
    if (!isSelected(row)) return;
    const std::string copy = changedCopy(document);
    add(row, document, MemoryKind::NotReported,
        {[&] { return programDiff(document, copy); }, {}, [&] { return programLoad(document); }});
    std::remove(copy.c_str());
  }

  const Options& m_options;
  Documents m_documents;
  Results m_results;
  bool m_failed = false;
};

bool parseOptions(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--quick")
      options.quick = true;
    else if (option == "--all-qt")
      options.allQt = true;
    else if (option == "--markdown")
      options.markdown = true;
    else if (option == "--folder" && i + 1 < argc)
      options.folder = argv[++i];
    else if (option == "--only" && i + 1 < argc)
      options.only = argv[++i];
    else if (option == "--mixed" && i + 1 < argc)
      options.mixed = argv[++i];
    else if (option == "--mesh" && i + 1 < argc)
      options.facets = std::strtoull(argv[++i], nullptr, 10);
    else
      return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == loadOption) return loadAlone(argv[2]) ? 0 : 1;
  Options options;
  if (!parseOptions(argc, argv, options)) {
    std::cerr << "usage: document_benchmark [--quick] [--all-qt] [--markdown] [--folder <folder>] "
                 "[--only <text>] [--mixed <file>] [--mesh <facets>]\n"
                 "ends with exit code 1 if a run fails or, without --quick, a target is missed\n";
    return 2;
  }
  try {
    Benchmark benchmark(options);
    const Results& results = benchmark.run();
    printTables(std::cout, results, options.markdown);
    if (options.quick) std::cout << "At these sizes the verdicts mean little.\n\n";
    const bool targetsAreMet = printTargets(std::cout, results, options.markdown);
    return !benchmark.failed() && (targetsAreMet || options.quick) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "document_benchmark: " << error.what() << "\n";
    return 1;
  }
}
