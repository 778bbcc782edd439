#pragma once

#include <functional>
#include <optional>
#include <QString>

#include "../text/element_text.h"

namespace ztcad {

/// What an element reads itself from, whatever carries it. Holds good only while the carrier visits the
/// element.
class ElementView {
 public:
  virtual ~ElementView() = default;

  virtual QString tag() const = 0;

  /// The attribute's text, nothing when the element does not have it.
  virtual std::optional<QString> attribute(const QString& name) const = 0;

  virtual bool hasAttribute(const QString& name) const { return attribute(name).has_value(); }

  /// The same, for readers of numbers.
  virtual std::optional<ElementText> attributeText(const QString& name) const {
    const auto text = attribute(name);
    return text ? std::optional(ElementText(*text)) : std::nullopt;
  }

  /// The text of the element and of everything inside it, in the order of the document.
  virtual ElementText text() const = 0;

  using ChildVisitor = std::function<void(const ElementView& child)>;
  /// Calls `visit` for each child element in the order of the document; nodes that are no elements are passed
  /// over. A carrier may read its bytes only once: attributes first, then one call of this.
  virtual void forEachChild(const ChildVisitor& visit) const = 0;
};

}  // namespace ztcad
