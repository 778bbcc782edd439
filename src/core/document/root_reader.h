#pragma once

#include "../../structure/child_reader.h"
#include "../../structure/read_structures.h"
#include "../vocabulary.h"
#include "document.h"

namespace ztcad {

/// Reads the children of a root into its own content and header, so a failed load changes no document.
class RootReader {
 public:
  explicit RootReader(const ztCAD_HeaderNode& header) : m_header(header) {}

  void readRoot(const ElementView& root) {
    const StructureListScope scope(m_nested);
    root.forEachChild([this](const ElementView& child) { readOne(child); });
  }

  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_HeaderNode& header() const { return m_header; }
  /// The nested structures that were read; whoever takes the content takes these too.
  StructureList& nested() { return m_nested; }
  /// Whether a child after the last header failed to read itself.
  bool fault() const { return m_fault; }

 private:
  void readOne(const ElementView& child) {
    const QString tag = child.tag();
    if (tag == words().header)
      readHeader(child);
    else if (readChild(m_content, child, tag) == ChildOutcome::Failed)
      m_fault = true;
  }

  /// The read of a header clears the flag that it is given, so faults of children before it are forgotten.
  void readHeader(const ElementView& child) {
    ztCAD_HeaderNode header;
    if (header.read(child, m_fault)) m_header = header;
  }

  ztCAD_DocumentContent m_content;
  ztCAD_HeaderNode m_header;
  StructureList m_nested;
  bool m_fault = false;
};

}  // namespace ztcad
