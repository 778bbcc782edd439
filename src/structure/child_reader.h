#pragma once

#include "../xml/element_view.h"
#include "../core/vocabulary.h"

namespace ztcad {

/// Appends a new element to `elements` and lets it read itself where it will stay, also when it fails.
template <typename Container>
bool readNew(Container& elements, const ElementView& child) {
  bool ownFault = false;
  return elements.appendNew().read(child, ownFault);
}

/// The "method" of an element, empty when it has none.
inline QString methodOf(const ElementView& element) {
  return element.attribute(words().method).value_or(QString());
}

/// What became of a child that was offered to a reader.
enum class ChildOutcome { Unknown, Skipped, Read, Failed };

inline ChildOutcome outcomeOf(bool readOk) { return readOk ? ChildOutcome::Read : ChildOutcome::Failed; }

/// Reads a child that is a point, a polyline or a solid into the container of its kind.
///
/// A line that is no polyline is passed over. A solid of no known method is `otherSolid`: a failure inside
/// structures and details, passed over in a document.
template <typename Content>
ChildOutcome readGeometry(Content& content, const ElementView& child, const QString& tag,
                          ChildOutcome otherSolid) {
  if (tag == words().point) return outcomeOf(readNew(content.points, child));
  if (tag == words().line)
    return methodOf(child) == words().polyline ? outcomeOf(readNew(content.lines, child))
                                               : ChildOutcome::Skipped;
  if (tag != words().solid) return ChildOutcome::Unknown;
  const QString method = methodOf(child);
  if (method == words().triangulation) return outcomeOf(readNew(content.triangles, child));
  if (method == words().sphere) return outcomeOf(readNew(content.spheres, child));
  return otherSolid;
}

/// Reads a child of any kind that documents and structures have in common, nested structures excepted.
template <typename Content>
ChildOutcome readMember(Content& content, const ElementView& child, const QString& tag,
                        ChildOutcome otherSolid) {
  const Vocabulary& word = words();
  const ChildOutcome geometry = readGeometry(content, child, tag, otherSolid);
  if (geometry != ChildOutcome::Unknown) return geometry;
  if (tag == word.elementMip)
    return methodOf(child) == word.mip ? outcomeOf(readNew(content.mipElements, child))
                                       : ChildOutcome::Skipped;
  if (tag == word.pointRef) return outcomeOf(readNew(content.pointReferences, child));
  if (tag == word.lineRef) return outcomeOf(readNew(content.lineReferences, child));
  if (tag == word.solidRef) return outcomeOf(readNew(content.triangleReferences, child));
  if (tag == word.elementMipRef) return outcomeOf(readNew(content.mipReferences, child));
  if (tag == word.detail) return outcomeOf(readNew(content.details, child));
  if (tag == word.detailRef) return outcomeOf(readNew(content.detailReferences, child));
  if (tag == word.structureRef) return outcomeOf(readNew(content.structureReferences, child));
  return ChildOutcome::Unknown;
}

}  // namespace ztcad
