#pragma once

#include <functional>
#include <optional>
#include <QString>

namespace ztcad {

/// The text of an element as its carrier holds it. Lists of numbers are read from here without another copy.
class ElementText {
 public:
  explicit ElementText(QString text) : m_text(std::move(text)) {}
  const QString& toString() const { return m_text; }

 private:
  QString m_text;
};

/// What an element reads itself from, whatever carries it. Holds good only while the carrier visits the
/// element.
class ElementView {
 public:
  virtual ~ElementView() = default;

  virtual QString tag() const = 0;

  /// The attribute's text, nothing when the element does not have it.
  virtual std::optional<QString> attribute(const QString& name) const = 0;

  /// The text of the element and of everything inside it, in the order of the document.
  virtual ElementText text() const = 0;

  using ChildVisitor = std::function<void(const ElementView& child)>;
  /// Calls `visit` for each child element in the order of the document; nodes that are no elements are passed
  /// over. A carrier may read its bytes only once: attributes first, then one call of this.
  virtual void forEachChild(const ChildVisitor& visit) const = 0;
};

}  // namespace ztcad
