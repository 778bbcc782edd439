#pragma once

#include "../../structure/child_reader.h"
#include "../../structure/read_structures.h"
#include "../node_slabs.h"
#include "../vocabulary.h"
#include "document.h"

namespace ztcad {

/// Reads the children of a root into its own content and header, so a failed load changes no document.
class RootReader {
 public:
  explicit RootReader(const ztCAD_HeaderNode& header) : m_header(header) {}

  void readRoot(const ElementView& root) {
    const StructureListScope scope(m_nested);
    const NodeSlabScope slabs;
    root.forEachChild([this](const ElementView& child) { readOne(child); });
  }

  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_HeaderNode& header() const { return m_header; }
  /// The nested structures that were read; whoever takes the content takes these too.
  StructureList& nested() { return m_nested; }
  /// The names of the children that were read.
  const NameRuns& names() const { return m_names; }
  /// Whether a child after the last header failed to read itself.
  bool fault() const { return m_fault; }

 private:
  /// A child that failed to read itself, and what a review found in it.
  struct FailedChild {
    const ztCAD_Structure* structure;  // null: another element
    Review::Mark from;
    Review::Mark to;
  };

  void readOne(const ElementView& child) {
    const QString& tag = child.tag();
    if (equalsWord(tag, words().header)) return readHeader(child);
    m_hasChildren = true;
    const Review* const review = reviewOf(child);
    const Review::Mark from = review ? review->mark() : Review::Mark();
    const ChildOutcome outcome = readChild(m_content, child, tag, &m_names);
    reviewSkipped(child, outcome, Rule::unknown_method);
    if (outcome != ChildOutcome::Failed) return;
    m_fault = true;
    if (!review) return;
    const bool isStructure = tag == words().structure;
    m_failed.push_back({isStructure ? &m_content.structures.back() : nullptr, from, review->mark()});
  }

  /// The read of a header clears the flag that it is given, so faults of children before it are forgotten.
  void readHeader(const ElementView& child) {
    if (m_hasHeader) report(child, Rule::repeated_header);
    if (m_hasChildren && !m_hasHeader) report(child, Rule::header_not_first);
    m_hasHeader = true;
    ztCAD_HeaderNode header;
    if (header.read(child, m_fault)) m_header = header;
    if (reviewOf(child)) forgetFailures(*reviewOf(child));
  }

  /// What was found in a child that no longer counts is no error, unless the document check fails because of
  /// it.
  void forgetFailures(Review& review) {
    for (const FailedChild& child : m_failed)
      if (!child.structure || child.structure->passesCheck()) review.tolerate(child.from, child.to);
    m_failed.clear();
  }

  ztCAD_DocumentContent m_content;
  ztCAD_HeaderNode m_header;
  StructureList m_nested;
  NameRuns m_names;
  bool m_fault = false;
  bool m_hasChildren = false;
  bool m_hasHeader = false;
  std::vector<FailedChild> m_failed;  // since the last header; for reviews only
};

}  // namespace ztcad
