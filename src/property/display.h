#pragma once

#include <cstdint>
#include <optional>

#include "../core/node.h"

/// @file
/// How an element is displayed: colour and visibility.

/// An optional colour. Components are stored as given: any 32-bit value, not clamped to 255.
class ZTCAD_API ztCAD_Color : public ztCAD_ISerialize, private ztCAD_INode {
 public:
  /// No colour.
  ztCAD_Color() = default;
  /// A colour with these components.
  ztCAD_Color(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
      : m_isSet(true), m_red(red), m_green(green), m_blue(blue) {}

  /// Whether there is a colour.
  bool isSet() const { return m_isSet; }
  /// The components; 0 if there is no colour.
  /// @{
  std::uint32_t red() const { return m_red; }
  std::uint32_t green() const { return m_green; }
  std::uint32_t blue() const { return m_blue; }
  /// @}

  /// Sets the colour.
  void set(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    *this = ztCAD_Color(red, green, blue);
  }
  /// Clears the colour.
  void unset() { *this = ztCAD_Color(); }

  /// "RGB, 255, 128, 0"; nothing when unset.
  QString& toText(QString& out, bool debugForm) const override;

  using ztCAD_INode::readXml;
  using ztCAD_INode::writeXml;
  /// Always sets "color", to an empty text if there is no colour: readers of the format expect the attribute.
  void write(ztcad::ElementSink& element) const override;
  /// False, with nothing changed, if the first part of "color" is not "RGB". An absent or empty "color" and a
  /// number of components other than three change nothing and are no failure. A component that is no number
  /// counts as 0.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  bool m_isSet = false;
  std::uint32_t m_red = 0;
  std::uint32_t m_green = 0;
  std::uint32_t m_blue = 0;
};

/// The optional visibility of an element.
class ZTCAD_API ztCAD_Visible : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  /// Unset.
  ztCAD_Visible() = default;
  /// Shown if `visible` is true, else hidden.
  explicit ztCAD_Visible(bool visible) : m_isSet(true), m_value(visible) {}

  /// Whether the visibility is set.
  bool isSet() const { return m_isSet; }
  /// True: shown; false: hidden; std::nullopt: unset.
  /// @{
  std::optional<bool> value() const { return m_isSet ? std::optional(m_value) : std::nullopt; }
  void setValue(std::optional<bool> visible) { *this = visible ? ztCAD_Visible(*visible) : ztCAD_Visible(); }
  /// @}

  /// "visible=truetrue" or "visible=falsefalse"; nothing when unset. The word is doubled: programs that read
  /// these texts expect it so.
  QString& toText(QString& out, bool debugForm) const override;
  /// Sets "visible" to "true" or "false"; does nothing when unset.
  void write(ztcad::ElementSink& element) const override;
  /// Always true. "false" in upper or lower case and numbers up to 0 mean hidden, every other text shown,
  /// also an empty one. An absent "visible" changes nothing.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  bool m_isSet = false;
  bool m_value = false;
};

/// Colour and visibility of an element.
class ZTCAD_API ztCAD_gShowable : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  ztCAD_gShowable() = default;

  /// The colour, which may be unset.
  /// @{
  ztCAD_Color color() const { return m_hasColor ? ztCAD_Color(m_red, m_green, m_blue) : ztCAD_Color(); }
  void setColor(const ztCAD_Color& color);
  /// @}

  /// The visibility, which may be unset.
  /// @{
  ztCAD_Visible visible() const { return m_hasVisible ? ztCAD_Visible(m_isVisible) : ztCAD_Visible(); }
  void setVisible(const ztCAD_Visible& visible);
  /// @}

  /// "color=RGB, 255, 0, 0visible=visible=truetrue", without a separator: programs that read these texts
  /// expect it so.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  /// Reads both as their classes do; false if the colour does not read.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  // the values of a ztCAD_Color and a ztCAD_Visible: as members these two would cost 40 more bytes per
  // element
  std::uint32_t m_red = 0;
  std::uint32_t m_green = 0;
  std::uint32_t m_blue = 0;
  bool m_hasColor = false;
  bool m_hasVisible = false;
  bool m_isVisible = false;
};
