#pragma once

#include "../core/node.h"

/// @file
/// The method of an element.

namespace ztcad {
class SharedMethods;
}

/// How an element is constructed or displayed: one word, the attribute "method". Any word is stored; the
/// readers of documents, structures and details decide which ones they accept.
class ZTCAD_API ztCAD_gMethod : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  /// No method.
  ztCAD_gMethod() = default;
  /// With the word `method`.
  explicit ztCAD_gMethod(const QString& method) : m_method(method) {}
  /// Copies the word.
  /// @{
  ztCAD_gMethod(const ztCAD_gMethod& other)
      : ztCAD_INode(other), ztCAD_ISerialize(other), m_method(other.m_method) {}
  ztCAD_gMethod& operator=(const ztCAD_gMethod& other) {
    m_method = other.m_method;
    return *this;
  }
  /// @}
  ~ztCAD_gMethod() override = default;

  /// The word, such as "polyline"; empty if there is none.
  /// @{
  const QString& method() const { return m_method; }
  void setMethod(const QString& method) { m_method = method; }
  /// @}

  /// The word.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// False, with the word unchanged, if "method" is absent.
  bool read(const ztcad::ElementView& element, bool& fault) override;

  /// Whether this object belongs to no element: all elements with the word share it, and it never changes.
  bool isShared() const { return m_isShared; }

 private:
  friend class ztcad::SharedMethods;

  QString m_method;
  bool m_isShared = false;
};
