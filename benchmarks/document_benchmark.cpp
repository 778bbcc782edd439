/// Whole documents through the library's exported functions, compared with an implementation by Qt's own
/// calls and with a hand-tuned one.
///
///   document_benchmark [--quick] [--all-qt] [--markdown] [--folder <folder>] [--only <text>]
///
///   --quick     small sizes only, to see that everything runs
///   --all-qt    run the Qt baseline at every size, even where it takes minutes and gigabytes
///   --markdown  print Markdown tables
///   --folder    parent of the folder for the files; by default in memory, where no save waits for a disk
///   --only      run only the cases whose name contains this text

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "library_run.h"
#include "plain_structs.h"
#include "program_run.h"
#include "qt_baseline.h"
#include "reference_implementation.h"
#include "table.h"

namespace {

using namespace benchmarks;

struct Options {
  bool quick = false;
  bool allQt = false;
  bool markdown = false;
  std::string only;
  std::string folder = std::filesystem::is_directory("/dev/shm")
                           ? "/dev/shm"
                           : std::filesystem::temp_directory_path().string();
};

/// Loads into a `Content` that outlives the measurement.
template <typename Content, typename Load>
Measurement timedLoad(const Document& document, Load load) {
  Content content;
  return timed([&] { return load(document, content); });
}

Measurement loadWithReference(const Document& document) {
  if (document.shape == Shape::Mesh)
    return timedLoad<Mesh>(document, [](const Document& d, Mesh& mesh) { return referenceLoad(d, mesh); });
  return timedLoad<std::list<PointRecord>>(
      document, [](const Document& d, std::list<PointRecord>& points) { return referenceLoad(d, points); });
}

Measurement loadWithQt(const Document& document) {
  if (document.shape == Shape::Mesh)
    return timedLoad<Mesh>(document, [](const Document& d, Mesh& mesh) { return qtLoad(d, mesh); });
  return timedLoad<std::list<QtPoint>>(
      document, [](const Document& d, std::list<QtPoint>& points) { return qtLoad(d, points); });
}

template <typename Content, typename Save>
Measurement timedSave(const Document& document, Save save) {
  Content content;
  if (!referenceLoad(document, content)) throw std::runtime_error(document.file + " cannot be loaded");
  return timed([&] { return save(content); });
}

Measurement saveWithReference(const Document& document, const std::string& file) {
  if (document.shape == Shape::Mesh)
    return timedSave<Mesh>(document, [&](const Mesh& mesh) { return referenceSave(mesh, file); });
  std::list<PointRecord> list;
  if (!referenceLoad(document, list)) return {};
  const std::vector<PointRecord> points(list.begin(), list.end());
  return timed([&] { return referenceSave(points, document.shape, file); });
}

Measurement saveWithQt(const Document& document, const std::string& file) {
  if (document.shape == Shape::Mesh)
    return timedSave<Mesh>(document, [&](const Mesh& mesh) { return qtSave(mesh, file); });
  std::list<QtPoint> points;
  if (!qtLoad(document, points)) return {};
  return timed([&] { return qtSave(points, document.shape, file); });
}

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
    using Sizes = std::vector<std::size_t>;
    const Sizes vertices = m_options.quick ? Sizes{1350, 13500} : Sizes{13500, 135000, 1000000};
    const Sizes points = m_options.quick ? Sizes{1000, 10000} : Sizes{10000, 100000, 1000000};
    for (const std::size_t size : vertices)
      runMesh(m_documents.make(Shape::Mesh, size));
    for (const std::size_t size : points)
      runPoints(size);
    for (const std::size_t size : points)
      runBuilding(size);
    runProgram(m_documents.make(Shape::Mesh, vertices.back()),
               m_documents.make(Shape::DifferentNames, points.front()));
    runDiff("mesh", m_documents.make(Shape::Mesh, vertices.back()));
    runDiff("points", m_documents.make(Shape::DifferentNames, points.back()));
    return m_results;
  }

 private:
  /// The Qt baseline, omitted above the size `largest` because it takes too long there.
  std::function<Measurement()> qtUpTo(std::size_t largest, std::size_t size,
                                      const std::function<Measurement()>& run) const {
    return m_options.allQt || size <= largest ? run : nullptr;
  }

  bool isSelected(const std::string& name) const { return name.find(m_options.only) != std::string::npos; }

  void add(const std::string& name, const Document& document, MemoryKind memory,
           const Implementations& implementations) {
    if (!isSelected(name)) return;
    Row row = measure(name, implementations);
    row.size = document.size;
    row.bytes = document.bytes;
    row.memory = memory;
    m_results.add(row);
  }

  void addWithoutFile(const std::string& name, std::size_t size, const Implementations& implementations) {
    if (!isSelected(name)) return;
    Row row = measure(name, implementations);
    row.size = size;
    m_results.add(row);
  }

  void runLoad(const std::string& name, const Document& document) {
    add(name + ", load", document, MemoryKind::Load,
        {[&] { return libraryLoad(document); },
         qtUpTo(1000000, document.size, [&] { return loadWithQt(document); }),
         [&] { return loadWithReference(document); }});
  }

  /// Compares the library with itself: the same elements in other forms of XML, and in the plain one.
  void runForms(const std::string& name, const Document& document) {
    for (const auto& [form, suffix] : forms) {
      const std::string row = name + suffix;
      if (!isSelected(row)) continue;
      const Document other = Documents::inForm(form, document);
      Row measured =
          measure(row, {[&] { return libraryLoad(other); }, {}, [&] { return libraryLoad(document); }});
      measured.size = document.size;
      measured.bytes = other.bytes;
      measured.referenceBytes = document.bytes;
      m_results.add(measured);
    }
  }

  /// Compares a review with a load of the same document.
  void runReview(const std::string& name, const Document& document) {
    add(name + ", review", document, MemoryKind::Load,
        {[&] { return libraryReview(document); }, {}, [&] { return libraryLoad(document); }});
  }

  void runSave(const std::string& name, const Document& document) {
    const std::string file = m_documents.scratch();
    Implementations implementations;
    implementations.library = intoNewFile(file, [&] { return librarySave(document, file); });
    implementations.qt =
        qtUpTo(200000, document.size, intoNewFile(file, [&] { return saveWithQt(document, file); }));
    implementations.reference = intoNewFile(file, [&] { return saveWithReference(document, file); });
    add(name + ", save", document, MemoryKind::Save, implementations);
  }

  void runMesh(const Document& mesh) {
    runLoad("mesh", mesh);
    runReview("mesh", mesh);
    runForms("mesh, load", mesh);
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
    runCheck("template points, check", m_documents.make(Shape::Templates, size));
    runDelete(points);
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
    if (!isSelected(first) || !isSelected(second)) return;
    Row names = *m_results.largest(first);
    names.name = renaming;
    names.library.seconds -= m_results.largest(second)->library.seconds;
    names.reference = measure(renaming, {[&] { return plainUnify(size); }, {}, {}}).library;
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
                 "[--only <text>]\n";
    return 2;
  }
  try {
    Benchmark benchmark(options);
    const Results& results = benchmark.run();
    printTables(std::cout, results, options.markdown);
    if (options.quick) std::cout << "At these sizes the verdicts mean little.\n\n";
    printTargets(std::cout, results, options.markdown);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "document_benchmark: " << error.what() << "\n";
    return 1;
  }
}
