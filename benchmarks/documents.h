#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace benchmarks {

enum class Shape {
  Mesh,            // one solid; its size is the number of vertices, with twice as many facets
  DifferentNames,  // points of the root, each with its own name
  SameName,        // points of the root, all with the same name
  Structures,      // a hundred points in each structure
  Templates,       // template points
  References,      // references to points, after `templatesToRefer` template points
  Mixed,           // a document of many kinds, repeated; its size is the number of elements
};

/// Forms of XML beyond the plain one that programs write, each with the same content.
enum class Form {
  DocumentType,   // a document type declaration at the start
  Comments,       // a document type, and a comment after each empty element
  Cdata,          // the lists of a mesh, and a section after each empty element
  Instructions,   // after each empty element
  CdataAtTheEnd,  // the plain reader reads everything before it gives up
  Utf16,
};

/// The number of elements, structures and details included, and of all reals and indices in them.
struct ContentSize {
  std::size_t elements = 0;
  std::size_t numbers = 0;
};

/// A file as a save of the library would write it, except that a mixed document has its author's form.
struct Document {
  Shape shape = Shape::Mesh;
  std::size_t size = 0;  // vertices, points, references or elements
  std::string file;
  double bytes = 0;         // of the file
  std::size_t numbers = 0;  // a mixed document: see ContentSize
};

constexpr std::size_t pointsInStructure = 100;
constexpr std::size_t templatesToRefer = 3;

struct Mesh {
  std::vector<double> coordinates;
  std::vector<std::uint32_t> indices;
};

Mesh makeMesh(std::size_t vertices);
std::string pointName(Shape shape, std::size_t index);

/// The documents of one benchmark run, in a temporary folder that is removed with this object.
class Documents {
 public:
  /// @param folder parent of the temporary folder; throws if that cannot be created
  explicit Documents(const std::string& folder);
  Documents(const Documents&) = delete;
  Documents& operator=(const Documents&) = delete;
  ~Documents();

  /// Writes a document, unless it has been written before. Throws if it cannot be written.
  const Document& make(Shape shape, std::size_t size);
  /// Writes a mixed document, `text` repeated (mixed_document.h). Throws if it cannot be written, or if the
  /// reference implementation does not support it.
  Document makeMixed(const std::string& text, std::size_t copies) const;
  /// A copy of the document that the plain reader does not accept.
  static Document inForm(Form form, const Document& document);
  /// Target file for saves, in the same folder.
  std::string scratch() const { return m_folder + "/saved.xml"; }

 private:
  std::string m_folder;
  std::deque<Document> m_documents;  // a deque: references returned by make() stay valid
};

}  // namespace benchmarks
