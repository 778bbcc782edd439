#pragma once

#include <memory>
#include <optional>

#include "attributes.h"
#include "coordinate_system.h"
#include "display.h"

/// @file
/// What every named element carries.

/// What every named element carries: descriptive attributes, colour, visibility and perhaps a coordinate
/// system, all of them XML attributes on the element itself. Copies are deep.
class ZTCAD_API ztCAD_cmnProperty : public ztCAD_INode, private ztCAD_ISerialize, public ztCAD_StateCorrect {
 public:
  ztCAD_cmnProperty() = default;
  /// Copies the coordinate system too, where there is one.
  /// @{
  ztCAD_cmnProperty(const ztCAD_cmnProperty& other);
  ztCAD_cmnProperty& operator=(const ztCAD_cmnProperty& other);
  /// @}
  ~ztCAD_cmnProperty() override;

  /// Name, comment and inform. The reference stays good as long as the block.
  /// @{
  const ztCAD_gAttr& attributes() const { return m_attributes; }
  ztCAD_gAttr& attributes() { return m_attributes; }
  void setAttributes(const ztCAD_gAttr& attributes) { m_attributes = attributes; }
  /// @}

  /// Colour and visibility. The reference stays good as long as the block.
  /// @{
  const ztCAD_gShowable& showable() const { return m_showable; }
  ztCAD_gShowable& showable() { return m_showable; }
  void setShowable(const ztCAD_gShowable& showable) { m_showable = showable; }
  /// @}

  /// Whether there is a coordinate system, be it one without values.
  bool hasLCS() const { return m_lcs != nullptr; }
  /// A copy of the coordinate system; nothing where there is none.
  std::optional<ztCAD_LCS> lcs() const { return m_lcs ? std::optional(*m_lcs) : std::nullopt; }
  /// Nothing: the element has no coordinate system from now on.
  void setLcs(const std::optional<ztCAD_LCS>& lcs);

  /// "attr=(name=P1, comment=, inform=) ,color=visible=", and the coordinate system's text where there is
  /// one.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// False when the element has no "name" or its "color" is not one. A coordinate system that is absent or
  /// does not read leaves the one that is there, and is no failure; only "LCS" is looked for, "MCS" belongs
  /// to references.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  ztCAD_gAttr m_attributes;
  ztCAD_gShowable m_showable;
  std::unique_ptr<ztCAD_LCS> m_lcs;  // null: none, as in nearly every element of a large document
};
