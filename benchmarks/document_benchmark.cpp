/// Whole documents through the library's exported functions, beside Qt's own way and beside a hand-tuned one.
///
///   document_benchmark [--quick] [--stock] [--markdown] [--folder <folder>] [--only <text>]
///
///   --quick     small sizes alone: does it run at all?
///   --stock     Qt's own way also where it takes minutes and gigabytes
///   --markdown  tables in Markdown
///   --folder    where the files are; without it in memory, where no save waits for a disk
///   --only      the cases whose name holds this text

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "library_way.h"
#include "reference_way.h"
#include "stock_way.h"
#include "table.h"

namespace {

using namespace benchmarks;

struct Options {
  bool quick = false;
  bool stock = false;
  bool markdown = false;
  std::string only;
  std::string folder = std::filesystem::is_directory("/dev/shm")
                           ? "/dev/shm"
                           : std::filesystem::temp_directory_path().string();
};

/// Loads into a `Content` that lives until the figures are taken.
template <typename Content, typename Load>
Figures timedLoad(const Document& document, Load load) {
  Content content;
  return timed([&] { return load(document, content); });
}

Figures loadByReference(const Document& document) {
  if (document.shape == Shape::Mesh)
    return timedLoad<Mesh>(document, [](const Document& d, Mesh& mesh) { return referenceLoad(d, mesh); });
  return timedLoad<std::list<BarePoint>>(
      document, [](const Document& d, std::list<BarePoint>& points) { return referenceLoad(d, points); });
}

Figures loadByStock(const Document& document) {
  if (document.shape == Shape::Mesh)
    return timedLoad<Mesh>(document, [](const Document& d, Mesh& mesh) { return stockLoad(d, mesh); });
  return timedLoad<std::list<StockPoint>>(
      document, [](const Document& d, std::list<StockPoint>& points) { return stockLoad(d, points); });
}

template <typename Content, typename Save>
Figures timedSave(const Document& document, Save save) {
  Content content;
  if (!referenceLoad(document, content)) throw std::runtime_error(document.file + " does not load");
  return timed([&] { return save(content); });
}

Figures saveByReference(const Document& document, const std::string& file) {
  if (document.shape == Shape::Mesh)
    return timedSave<Mesh>(document, [&](const Mesh& mesh) { return referenceSave(mesh, file); });
  std::list<BarePoint> list;
  if (!referenceLoad(document, list)) return {};
  const std::vector<BarePoint> points(list.begin(), list.end());
  return timed([&] { return referenceSave(points, document.shape, file); });
}

Figures saveByStock(const Document& document, const std::string& file) {
  if (document.shape == Shape::Mesh)
    return timedSave<Mesh>(document, [&](const Mesh& mesh) { return stockSave(mesh, file); });
  std::list<StockPoint> points;
  if (!stockLoad(document, points)) return {};
  return timed([&] { return stockSave(points, document.shape, file); });
}

/// Saves without an earlier file: giving back what that held would count as time of the save.
template <typename Save>
std::function<Figures()> intoNothing(const std::string& file, Save save) {
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
    return m_results;
  }

 private:
  /// Qt's own way, left out above a size from which it takes too long.
  std::function<Figures()> stockUpTo(std::size_t largest, std::size_t size,
                                     const std::function<Figures()>& run) const {
    return m_options.stock || size <= largest ? run : nullptr;
  }

  bool isAskedFor(const std::string& what) const { return what.find(m_options.only) != std::string::npos; }

  void add(const std::string& what, const Document& document, Memory memory, const Ways& ways) {
    if (!isAskedFor(what)) return;
    Row row = measure(what, ways);
    row.size = document.size;
    row.bytes = document.bytes;
    row.memory = memory;
    m_results.add(row);
  }

  void addWithoutFile(const std::string& what, std::size_t size, const Ways& ways) {
    if (!isAskedFor(what)) return;
    Row row = measure(what, ways);
    row.size = size;
    m_results.add(row);
  }

  void runLoad(const std::string& what, const Document& document) {
    add(what + ", load", document, Memory::OfLoad,
        {[&] { return libraryLoad(document); },
         stockUpTo(1000000, document.size, [&] { return loadByStock(document); }),
         [&] { return loadByReference(document); }});
  }

  /// The library beside itself: the same elements filled from a tree.
  void runTree(const std::string& what, const Document& document) {
    if (!isAskedFor(what)) return;
    const Document byTree = Documents::forTheTree(document);
    addWithoutFile(what, document.size,
                   {[&] { return libraryLoad(document); }, {}, [&] { return libraryLoad(byTree); }});
  }

  void runSave(const std::string& what, const Document& document) {
    const std::string file = m_documents.scratch();
    Ways ways;
    ways.ours = intoNothing(file, [&] { return librarySave(document, file); });
    ways.stock =
        stockUpTo(200000, document.size, intoNothing(file, [&] { return saveByStock(document, file); }));
    ways.reference = intoNothing(file, [&] { return saveByReference(document, file); });
    add(what + ", save", document, Memory::OfSave, ways);
  }

  void runMesh(const Document& mesh) {
    runLoad("mesh", mesh);
    runSave("mesh", mesh);
  }

  void runPoints(std::size_t size) {
    const Document& points = m_documents.make(Shape::DifferentNames, size);
    runLoad("points", points);
    runTree("points, load (ref: through its own tree)", points);
    runSave("points", points);
    runLoad("points of one name", m_documents.make(Shape::OneName, size));
    runUnify(size);
    const Document& structures = m_documents.make(Shape::Structures, size);
    runLoad("points in structures", structures);
    runTree("points in structures, load (ref: through its own tree)", structures);
    runSave("points in structures", structures);
    runCheck("points in structures, check", structures);
    runCheck("template points, check", m_documents.make(Shape::Templates, size));
    runDelete(points);
  }

  void runUnify(std::size_t size) {
    const std::string file = m_documents.scratch();
    const char* const first = "points of one name, first save";
    const char* const next = "points of one name, next save";
    const char* const renaming = "points of one name, renaming (first - next)";
    Ways ways;
    ways.ours = intoNothing(file, [&] { return libraryUnify(size, false, file); });
    addWithoutFile(first, size, ways);
    ways.ours = intoNothing(file, [&] { return libraryUnify(size, true, file); });
    addWithoutFile(next, size, ways);
    if (!isAskedFor(first) || !isAskedFor(next)) return;
    Row names = *m_results.largest(first);
    names.what = renaming;
    names.ours.seconds -= m_results.largest(next)->ours.seconds;
    names.reference = measure(renaming, {[&] { return bareUnify(size); }, {}, {}}).ours;
    m_results.add(names);
  }

  /// Once with what an earlier check left in the processor's caches, and once as after other work. Growth shows in
  /// the second only: a small document lies in the caches, a large one does not.
  void runCheck(const std::string& what, const Document& document) {
    addWithoutFile(what, document.size, {[&] { return libraryCheck(document, nullptr); }, {}, {}});
    addWithoutFile(what + " (cold)", document.size,
                   {[&] { return libraryCheck(document, sweepCaches); }, {}, {}});
  }

  void runDelete(const Document& points) {
    constexpr std::size_t records = 1000000;
    const auto bare = [&] { return bareDelete(points); };
    addWithoutFile("points, delete", points.size, {[&] { return libraryDelete(points, 0); }, {}, bare});
    addWithoutFile("points, delete beside 10^6 records", points.size,
                   {[&] { return libraryDelete(points, records); }, {}, bare});
  }

  void runBuilding(std::size_t count) {
    addWithoutFile(
        "vertices, build", count,
        {[&] { return libraryBuildVertices(count); }, {}, [&] { return bareBuildVertices(count); }});
    addWithoutFile("points, build", count,
                   {[&] { return libraryBuildPoints(count); }, {}, [&] { return bareBuildPoints(count); }});
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
    else if (option == "--stock")
      options.stock = true;
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
  Options options;
  if (!parseOptions(argc, argv, options)) {
    std::cerr << "usage: document_benchmark [--quick] [--stock] [--markdown] [--folder <folder>] "
                 "[--only <text>]\n";
    return 2;
  }
  try {
    Benchmark benchmark(options);
    const Results& results = benchmark.run();
    printTables(std::cout, results, options.markdown);
    if (options.quick) std::cout << "At these sizes the verdicts say little.\n\n";
    printTargets(std::cout, results, options.markdown);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "document_benchmark: " << error.what() << "\n";
    return 1;
  }
}
