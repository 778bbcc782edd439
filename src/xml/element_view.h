#pragma once

#include <functional>
#include <optional>
#include <QString>
#include <string_view>

#include "../text/element_text.h"

namespace ztcad {

class ReadObserver;

/// An attribute as `ElementView::attributeBytes` returns it.
struct AttributeBytes {
  enum State {
    Unknown,  ///< `attribute` says whether there is one, and its text
    Absent,   ///< the element has no such attribute
    Known,    ///< the text is `ascii`
  };

  State state = Unknown;
  std::string_view ascii;  ///< without references
  /// End of readable memory, not before the end of the text; the byte after the text is part of no number.
  const char* endOfMemory = nullptr;
};

/// The interface that elements read themselves from, with two backends: a DOM tree and the bytes of a file.
/// Valid only while the backend visits the element.
class ElementView {
 public:
  virtual ~ElementView() = default;

  /// The element's tag; the reference is valid as long as the view.
  virtual const QString& tag() const = 0;

  /// The attribute's text; std::nullopt if the element has no such attribute.
  virtual std::optional<QString> attribute(const QString& name) const = 0;

  virtual bool hasAttribute(const QString& name) const { return attribute(name).has_value(); }

  /// The attribute's text in bytes, where the backend has it so and it needs no decoding. Not observed: while
  /// someone observes the element, an attribute that is present has no bytes here.
  virtual AttributeBytes attributeBytes(const QString& /*name*/) const { return {}; }
  /// The same for numbers whose parsers set the default locale to C: it is set if there are bytes.
  virtual AttributeBytes numberBytes(const QString& /*name*/) const { return {}; }

  /// The same for parsers of numbers, without decoding where the backend has bytes.
  virtual std::optional<ElementText> attributeText(const QString& name) const {
    const auto text = attribute(name);
    return text ? std::optional(ElementText(*text)) : std::nullopt;
  }

  /// The text of the element and of all its descendants, in document order.
  virtual ElementText text() const = 0;

  using ChildVisitor = std::function<void(const ElementView& child)>;
  /// Calls `visit` for each child element in document order; other nodes are skipped. A backend may read its
  /// bytes only once: read attributes first, then call either `text` or this, once.
  virtual void forEachChild(const ChildVisitor& visit) const = 0;

  // For reports about the element. Backends without positions, as the DOM, have no observer.

  /// Who learns what is not read of the element; null: nobody.
  ReadObserver* observer() const { return m_observer; }
  /// Nothing more of the element or its children is observed: it is skipped as a whole.
  void skipSilently() const { m_observer = nullptr; }

  /// Tells the observer what was not read of the element. Backends do so when the element ends, if nobody
  /// asks for it before.
  virtual void reportUnread() const {}

  /// The "<" of the start tag; null if the backend has no positions.
  virtual const char* position() const { return nullptr; }
  /// The start of the attribute's name; null without positions, or if there is no such attribute.
  virtual const char* attributePosition(const QString& /*name*/) const { return nullptr; }
  /// Where a byte of what `text()` returned lies in the text.
  virtual const char* textPosition(const char* byte) const { return byte; }

 protected:
  explicit ElementView(ReadObserver* observer = nullptr) : m_observer(observer) {}
  ElementView(const ElementView&) = default;
  ElementView& operator=(const ElementView&) = default;

 private:
  mutable ReadObserver* m_observer;
};

}  // namespace ztcad
