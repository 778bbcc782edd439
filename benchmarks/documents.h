#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace benchmarks {

enum class Shape {
  Mesh,            // one solid; its size is the number of vertices, twice as many facets
  DifferentNames,  // points of the root, each with a name of its own
  OneName,         // points of the root, all of one name
  Structures,      // a hundred points in each structure
  Templates,       // template points
};

/// A document on the disk, as a save would leave it.
struct Document {
  Shape shape = Shape::Mesh;
  std::size_t size = 0;  // vertices or points
  std::string file;
  double bytes = 0;  // of the file
};

constexpr std::size_t pointsInStructure = 100;

struct Mesh {
  std::vector<double> coordinates;
  std::vector<std::uint32_t> indices;
};

Mesh makeMesh(std::size_t vertices);
std::string pointName(Shape shape, std::size_t index);

/// The documents of one run, in a folder of its own that goes with it.
class Documents {
 public:
  /// @param folder where the folder of documents is made; throws when it cannot be
  explicit Documents(const std::string& folder);
  Documents(const Documents&) = delete;
  Documents& operator=(const Documents&) = delete;
  ~Documents();

  /// Writes a document, or finds it when it was written before. Throws when it cannot be written.
  const Document& make(Shape shape, std::size_t size);
  /// The same document in a file that the library cannot but read through a tree: an instruction stands at its end.
  static Document forTheTree(const Document& document);
  /// A file name beside the documents, for what is saved.
  std::string scratch() const { return m_folder + "/saved.xml"; }

 private:
  std::string m_folder;
  std::deque<Document> m_documents;  // those given out stay where they are
};

}  // namespace benchmarks
