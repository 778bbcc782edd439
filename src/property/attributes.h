#pragma once

#include "../core/node.h"

/// @file
/// The name and description of an element.

/// The descriptive attributes of an element: "name", "comment" and "inform".
///
/// All three are always written, even if empty. Reading sets absent ones to empty texts and fails only if
/// "name" is absent: an element without a name cannot be referred to. An empty name is valid.
class ZTCAD_API ztCAD_gAttr : public ztCAD_ISerialize,
                              private ztCAD_INode,
                              public ztCAD_IBaseChecker,
                              public ztCAD_StateCorrect {
 public:
  /// Three empty texts. `readOk()` is true before any read: these attributes are valid from the start.
  ztCAD_gAttr() : ztCAD_StateCorrect(true) {}

  /// The name by which references find the element. Stored as given; duplicates are renamed when the document
  /// is saved or loaded.
  /// @{
  const QString& name() const { return m_name; }
  void setName(const QString& name) { m_name = name; }
  /// @}

  /// Free text about the element; the attribute "inform".
  /// @{
  const QString& inform() const { return m_inform; }
  void setInform(const QString& inform) { m_inform = inform; }
  /// @}

  /// Free text about the element; the attribute "comment".
  /// @{
  const QString& comment() const { return m_comment; }
  void setComment(const QString& comment) { m_comment = comment; }
  /// @}

  /// "(name=P1, comment=, inform=)"
  QString& toText(QString& out, bool debugForm) const override;

  using ztCAD_INode::readXml;
  using ztCAD_INode::writeXml;
  void write(ztcad::ElementSink& element) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override;

  /// Whether the element has a "name". The object is not changed.
  [[nodiscard]] bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

 private:
  QString m_name;
  QString m_inform;
  QString m_comment;
};
