#pragma once

#include "../../structure/child_reader.h"
#include "../../structure/read_structures.h"
#include "../vocabulary.h"
#include "document.h"

namespace ztcad {

/// Reads the children of a root into a content and a header of its own, so that a load that fails changes no document.
class RootReader {
 public:
  explicit RootReader(const ztCAD_HeaderNode& header) : m_header(header) {}

  void readRoot(const ElementView& root) {
    const StructureListScope scope(m_nested);
    root.forEachChild([this](const ElementView& child) { readOne(child); });
  }

  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_HeaderNode& header() const { return m_header; }
  /// The structures that are nested in others.
  StructureList& nested() { return m_nested; }
  /// Whether a child failed to read itself, counted from the last header on.
  bool fault() const { return m_fault; }

 private:
  void readOne(const ElementView& child) {
    const QString tag = child.tag();
    if (tag == words().header)
      readHeader(child);
    else if (readChild(m_content, child, tag) == ChildOutcome::Failed)
      m_fault = true;
  }

  /// The header's read begins by clearing the flag that it is given, so faults of earlier children are forgotten.
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
