#pragma once

#include <cstdint>
#include <optional>

#include "../core/node.h"

/// @file
/// How an element is to be shown: colour and visibility.

/// A colour, or none. Components are kept as given: any 32-bit value, nothing is clamped to 255.
class ZTCAD_API ztCAD_Color : public ztCAD_ISerialize, private ztCAD_INode {
 public:
  ztCAD_Color() = default;
  /// That colour.
  ztCAD_Color(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
      : m_isSet(true), m_red(red), m_green(green), m_blue(blue) {}

  /// Whether there is a colour.
  bool isSet() const { return m_isSet; }
  /// The components; 0 while no colour is set.
  /// @{
  std::uint32_t red() const { return m_red; }
  std::uint32_t green() const { return m_green; }
  std::uint32_t blue() const { return m_blue; }
  /// @}

  /// Makes it that colour.
  void set(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    *this = ztCAD_Color(red, green, blue);
  }
  /// Makes it no colour.
  void unset() { *this = ztCAD_Color(); }

  /// "RGB, 255, 128, 0"; nothing when unset.
  QString& toText(QString& out, bool debugForm) const override;

  using ztCAD_INode::readXml;
  using ztCAD_INode::writeXml;
  /// Always sets "color", to an empty text when there is none: readers of the format expect the attribute.
  void write(ztcad::ElementSink& element) const override;
  /// False when "color" begins with anything but "RGB". No colour, or another count of parts, changes nothing
  /// and is no failure; a component that is no number counts as 0.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  bool m_isSet = false;
  std::uint32_t m_red = 0;
  std::uint32_t m_green = 0;
  std::uint32_t m_blue = 0;
};

/// Whether an element is to be shown, or no word about it.
class ZTCAD_API ztCAD_Visible : public ztCAD_INode, private ztCAD_ISerialize {
 public:
  ztCAD_Visible() = default;
  /// To be shown, or to be hidden.
  explicit ztCAD_Visible(bool visible) : m_isSet(true), m_value(visible) {}

  /// Whether there is a word about it.
  bool isSet() const { return m_isSet; }
  /// True: shown, false: hidden; nothing: no word about it.
  /// @{
  std::optional<bool> value() const { return m_isSet ? std::optional(m_value) : std::nullopt; }
  void setValue(std::optional<bool> visible) { *this = visible ? ztCAD_Visible(*visible) : ztCAD_Visible(); }
  /// @}

  /// "visible=truetrue" or "visible=falsefalse", nothing when unset. The word stands there twice; programs
  /// that read these texts know it so.
  QString& toText(QString& out, bool debugForm) const override;
  /// Sets "visible" only when there is something to say.
  void write(ztcad::ElementSink& element) const override;
  /// Always true. "false" in any case and numbers up to 0 hide; every other text shows, the empty one too.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  bool m_isSet = false;
  bool m_value = false;
};

/// Colour and visibility.
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

  /// "color=RGB, 255, 0, 0visible=visible=truetrue", run together as programs know it.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& element) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  // the values of a ztCAD_Color and of a ztCAD_Visible: the two themselves would take 40 bytes more in every element
  std::uint32_t m_red = 0;
  std::uint32_t m_green = 0;
  std::uint32_t m_blue = 0;
  bool m_hasColor = false;
  bool m_hasVisible = false;
  bool m_isVisible = false;
};
