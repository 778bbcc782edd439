#pragma once

#include "../xml/element_view.h"
#include "kinds.h"

namespace ztcad {

/// Appends a new element to `elements` and lets it read itself in its final place. It stays there also when its read
/// fails.
template <typename Container>
bool readNew(Container& elements, const ElementView& child) {
  bool ownFault = false;
  return elements.appendNew().read(child, ownFault);
}

/// The "method" of an element; empty when it has none.
inline QString methodOf(const ElementView& element) {
  return element.attribute(words().method).value_or(QString());
}

/// The result of offering a child to a reader.
enum class ChildOutcome {
  Unknown,  ///< no kind of this holder has the tag
  Skipped,  ///< the tag is known, but not with this method
  Read,
  Failed,
};

/// Reads a child into the container of its kind.
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

/// Whether a child makes the read of the structure or detail around it fail. A solid of an unknown method does; lines and
/// mass-inertia elements of other methods are skipped everywhere.
inline bool failsItsHolder(ChildOutcome outcome, const QString& tag) {
  return outcome == ChildOutcome::Failed || (outcome == ChildOutcome::Skipped && tag == words().solid);
}

}  // namespace ztcad
