#pragma once

#include "../xml/element_view.h"
#include "kinds.h"

namespace ztcad {

/// Appends a new element to `elements` and reads it in its final place. It stays there even if its read
/// fails.
template <typename Container>
bool readNew(Container& elements, const ElementView& child) {
  bool ownFault = false;
  return elements.appendNew().read(child, ownFault);
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
template <typename Content>
ChildOutcome readChild(Content& content, const ElementView& child, const QString& tag) {
  ChildOutcome outcome = ChildOutcome::Unknown;
  QString method;
  anyKind<Content>([&](auto kind) {
    using Kind = decltype(kind);
    if (tag != Kind::tag()) return false;
    if constexpr (Kind::method != nullptr) {
      if (outcome == ChildOutcome::Unknown) method = methodOf(child);
      outcome = ChildOutcome::Skipped;
      if (method != words().*Kind::method) return false;
    }
    outcome = readNew(Kind::in(content), child) ? ChildOutcome::Read : ChildOutcome::Failed;
    return true;
  });
  return outcome;
}

/// Whether the read of a structure or detail fails because of this child. A solid of an unknown method makes
/// it fail; lines and mass-inertia elements of other methods do not.
inline bool failsItsHolder(ChildOutcome outcome, const QString& tag) {
  return outcome == ChildOutcome::Failed || (outcome == ChildOutcome::Skipped && tag == words().solid);
}

}  // namespace ztcad
