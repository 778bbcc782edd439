#pragma once

#include <QString>
#include <string_view>

namespace ztcad {

/// What an element writes itself to, whatever carries it: a DOM tree or the bytes of a file.
///
/// A sink always stands at one open element. Attributes come before children and text; setting an attribute
/// twice keeps the second value. An element holds either children or text.
class ElementSink {
 public:
  virtual ~ElementSink() = default;

  /// Opens a child, lets `body` fill it and closes it. When `body` throws, the sink is left half-way and must
  /// be dropped with all that was written to it.
  template <typename Body>
  void element(const QString& tag, Body&& body) {
    open(tag);
    body(*this);
    close();
  }

  virtual void attribute(const QString& name, const QString& value) = 0;

  /// Appends to the element's text. Characters above 127 and `<`, `&`, `>` must not occur: all texts of the
  /// format are lists of numbers. May be called piece by piece; an element to which only empty pieces went
  /// has no text.
  virtual void text(std::string_view ascii) = 0;

 private:
  virtual void open(const QString& tag) = 0;
  virtual void close() = 0;
};

}  // namespace ztcad
