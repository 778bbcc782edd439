#pragma once

#include <QString>
#include <string_view>

#include "../text/short_text.h"

namespace ztcad {

/// The interface that elements write themselves to, with two backends: a DOM tree and the bytes of a file.
///
/// Calls refer to the innermost open element. Its attributes must be set before its children and text;
/// setting an attribute twice keeps the second value. An element holds either children or text.
class ElementSink {
 public:
  virtual ~ElementSink() = default;

  /// Opens a child, calls `body` (a function of the sink) to fill it and closes it. If `body` throws, the
  /// child stays open and the sink must be discarded with everything written to it.
  template <typename Body>
  void element(const QString& tag, Body&& body) {
    open(tag);
    body(*this);
    close();
  }

  virtual void attribute(const QString& name, const QString& value) = 0;
  /// The same for a short text.
  virtual void shortAttribute(const QString& name, const ztCAD_ShortText& value) {
    attribute(name, value.toString());
  }

  /// Sets an attribute to numbers, or to a fixed word. Characters above 127, control characters and `<`, `&`,
  /// `"` must not occur.
  virtual void plainAttribute(const QString& name, std::string_view ascii) = 0;

  /// Appends to the element's text. Characters above 127 and `<`, `&`, `>` must not occur: all texts of the
  /// format are lists of numbers. A text may be split over several calls; an element that received only empty
  /// ones has no text.
  virtual void text(std::string_view ascii) = 0;

 private:
  virtual void open(const QString& tag) = 0;
  virtual void close() = 0;
};

}  // namespace ztcad
