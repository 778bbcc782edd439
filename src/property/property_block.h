#pragma once

#include <memory>
#include <optional>

#include "attributes.h"
#include "coordinate_system.h"
#include "display.h"

/// @file
/// The property block of named elements.

/// The properties of every named element: descriptive attributes, colour, visibility and an optional
/// coordinate system. All of them are XML attributes of the element itself. Copies are deep.
class ZTCAD_API ztCAD_cmnProperty : public ztCAD_INode, private ztCAD_ISerialize, public ztCAD_StateCorrect {
 public:
  /// Empty texts, neither colour nor visibility nor coordinate system.
  ztCAD_cmnProperty() = default;
  /// Copies include the coordinate system.
  /// @{
  ztCAD_cmnProperty(const ztCAD_cmnProperty& other);
  ztCAD_cmnProperty& operator=(const ztCAD_cmnProperty& other);
  /// @}
  ~ztCAD_cmnProperty() override;

  /// Name, comment and inform. The reference is valid as long as the block.
  /// @{
  const ztCAD_gAttr& attributes() const { return m_attributes; }
  ztCAD_gAttr& attributes() { return m_attributes; }
  void setAttributes(const ztCAD_gAttr& attributes) { m_attributes = attributes; }
  /// @}

  /// Colour and visibility. The reference is valid as long as the block.
  /// @{
  const ztCAD_gShowable& showable() const { return m_showable; }
  ztCAD_gShowable& showable() { return m_showable; }
  void setShowable(const ztCAD_gShowable& showable) { m_showable = showable; }
  /// @}

  /// Whether there is a coordinate system, with or without values.
  bool hasLCS() const { return m_lcs != nullptr; }
  /// A copy of the coordinate system; std::nullopt if there is none. std::nullopt removes it.
  /// @{
  std::optional<ztCAD_LCS> lcs() const { return m_lcs ? std::optional(*m_lcs) : std::nullopt; }
  void setLcs(const std::optional<ztCAD_LCS>& lcs);
  /// @}

  /// "attr=(name=P1, comment=, inform=) ,color=visible=", and the text of the coordinate system if there is
  /// one.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// False if the element has no "name" or its "color" does not read. An "LCS" that is absent or does not
  /// read leaves the present coordinate system and is no failure. "MCS" is not read: it belongs to
  /// references.
  /// @param fault output, always false
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  ztCAD_gAttr m_attributes;
  ztCAD_gShowable m_showable;
  std::unique_ptr<ztCAD_LCS> m_lcs;  // null: none, the usual case in a large document
};
