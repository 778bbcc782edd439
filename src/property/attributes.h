#pragma once

#include "../core/node.h"

/// @file
/// What an element is called, and what is said about it.

/// The descriptive attributes of an element: "name", "comment" and "inform".
///
/// All three are written, empty or not. Reading takes what is there and fails only where "name" is missing:
/// an element without a name cannot be referred to. An empty name is a name.
class ZTCAD_API ztCAD_gAttr : public ztCAD_ISerialize,
                              private ztCAD_INode,
                              public ztCAD_IBaseChecker,
                              public ztCAD_StateCorrect {
 public:
  /// Three empty texts; sound before any read.
  ztCAD_gAttr() : ztCAD_StateCorrect(true) {}

  /// By which references and people know the element. Kept as given, duplicates included, until the document is saved or
  /// loaded.
  /// @{
  const QString& name() const { return m_name; }
  void setName(const QString& name) { m_name = name; }
  /// @}

  /// Free text about the element.
  /// @{
  const QString& inform() const { return m_inform; }
  void setInform(const QString& inform) { m_inform = inform; }
  /// @}

  /// Free text about the element, too.
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

  /// Whether the element has a "name"; reads nothing.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

 private:
  QString m_name;
  QString m_inform;
  QString m_comment;
};
