#pragma once

#include "../core/node.h"

/// @file
/// How an element is to be made or shown.

/// How an element is to be made or shown: one word, the attribute "method". Any word is kept; the readers of
/// documents, structures and details decide which ones they know.
class ZTCAD_API ztCAD_gMethod : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  ztCAD_gMethod() = default;
  /// With this word.
  explicit ztCAD_gMethod(const QString& method) : m_method(method) {}

  /// The word, such as "polyline"; empty for none.
  /// @{
  const QString& method() const { return m_method; }
  void setMethod(const QString& method) { m_method = method; }
  /// @}

  /// The word itself.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// False when there is no "method"; the word then stays as it was.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  QString m_method;
};
