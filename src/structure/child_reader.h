#pragma once

#include "../core/name_runs.h"
#include "../core/review.h"
#include "../text/wide_utf8.h"
#include "../xml/element_view.h"
#include "kinds.h"

namespace ztcad {

/// Appends a new element of a kind to a content struct and reads it in its final place. It stays there even
/// if its read fails.
/// @param names takes its name; null: nobody does
template <typename Kind, typename Content>
bool readNew(Content& content, const ElementView& child, NameRuns* names) {
  auto& elements = Kind::in(content);
  auto& element = elements.appendNew();
  const ReviewedElement reviewed(child, Kind::name, element);
  bool ownFault = false;
  const bool isRead = element.read(child, ownFault);
  if (names) names->take(&elements, element.shortName());
  return reviewed.read(isRead);
}

/// The "method" of an element; empty if it has none.
inline QString methodOf(const ElementView& element) {
  return element.attribute(words().method).value_or(QString());
}

/// The result of reading a child.
enum class ChildOutcome {
  Unknown,  ///< no kind of this holder has the tag
  Skipped,  ///< the tag is known, but not with this method; nothing was added
  Read,     ///< added, and its read succeeded
  Failed,   ///< added, but its read failed
};

/// Reads a child into the container of its kind: the first row of the table with its tag and method. This is
/// the only place where tags select kinds.
/// @param names takes the child's name; null: nobody does
template <typename Content>
ChildOutcome readChild(Content& content, const ElementView& child, const QString& tag, NameRuns* names) {
  ChildOutcome outcome = ChildOutcome::Unknown;
  QString method;
  anyKind<Content>([&](auto kind) {
    using Kind = decltype(kind);
    if (!equalsWord(tag, Kind::tag())) return false;
    if constexpr (Kind::method != nullptr) {
      if (outcome == ChildOutcome::Unknown) method = methodOf(child);
      outcome = ChildOutcome::Skipped;
      if (method != words().*Kind::method) return false;
    }
    outcome = readNew<Kind>(content, child, names) ? ChildOutcome::Read : ChildOutcome::Failed;
    return true;
  });
  return outcome;
}

/// Reports a child that was not read.
/// @param unknownMethod the rule for a child of an unknown method
inline void reviewSkipped(const ElementView& child, ChildOutcome outcome, Rule unknownMethod) {
  if (outcome == ChildOutcome::Unknown) skipUnknown(child);
  if (outcome != ChildOutcome::Skipped || !reviewOf(child)) return;
  report(child, unknownMethod, Quoted{child.tag()}, Quoted{methodOf(child)});
  child.skipSilently();
}

/// Reads a child of a structure or detail.
/// @param names takes its name; null: nobody does
/// @return whether the holder may still read well. A solid of an unknown method makes it fail; lines and
///         mass-inertia elements of other methods do not
template <typename Content>
bool readChildOf(Content& content, const ElementView& child, const QString& tag, NameRuns* names = nullptr) {
  const ChildOutcome outcome = readChild(content, child, tag, names);
  const bool isSolid = equalsWord(tag, words().solid);
  reviewSkipped(child, outcome, isSolid ? Rule::unknown_solid : Rule::unknown_method);
  return outcome != ChildOutcome::Failed && !(outcome == ChildOutcome::Skipped && isSolid);
}

}  // namespace ztcad
