#pragma once

#include "../core/node.h"

/// @file
/// The target of a reference.

/// The target of a reference: the name of a template and the file that contains it (empty: the same
/// document).
class ZTCAD_API ztCAD_gArche : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  ztCAD_gArche() = default;

  /// Name of the template; the attribute "template".
  /// @{
  const QString& templateName() const { return m_templateName; }
  void setTemplateName(const QString& name) { m_templateName = name; }
  /// @}

  /// The file that contains the template, empty for the same document; the attribute "file".
  /// @{
  const QString& file() const { return m_file; }
  void setFile(const QString& file) { m_file = file; }
  /// @}

  /// "arche(template=T, file=)"
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// Always true; an absent attribute reads as empty.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  QString m_templateName;
  QString m_file;
};
