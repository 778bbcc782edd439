#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "../text/short_text.h"
#include "attributes.h"
#include "coordinate_system.h"
#include "display.h"

/// @file
/// The property block of named elements.

/// The properties of every named element: descriptive attributes, colour, visibility and an optional
/// coordinate system. All of them are XML attributes of the element itself. Copies are deep.
///
/// Large documents have millions of these blocks, so a block holds the values in few bytes. The objects that
/// `attributes` and `showable` return are made on the first call and hold the values from then on, in some
/// 200 bytes more. These functions, and setting a colour with a component above 255, may throw
/// `std::bad_alloc` and then change nothing.
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

  /// Name, comment and inform. The reference is valid as long as the block. Several threads may call the
  /// const function of one block at a time.
  /// @{
  const ztCAD_gAttr& attributes() const { return objects().attributes; }
  ztCAD_gAttr& attributes() { return objects().attributes; }
  void setAttributes(const ztCAD_gAttr& attributes) { objects().attributes = attributes; }
  /// @}

  /// Colour and visibility. The reference is valid as long as the block. Several threads may call the const
  /// function of one block at a time.
  /// @{
  const ztCAD_gShowable& showable() const { return objects().showable; }
  ztCAD_gShowable& showable() { return objects().showable; }
  void setShowable(const ztCAD_gShowable& showable) { objects().showable = showable; }
  /// @}

  /// The values of `attributes` and `showable`.
  /// @{
  QString name() const { return shortName().toString(); }
  void setName(const QString& name) { setShortName(ztCAD_ShortText(name)); }
  QString comment() const;
  void setComment(const QString& comment);
  QString inform() const;
  void setInform(const QString& inform);
  ztCAD_Color color() const;
  void setColor(const ztCAD_Color& color);
  ztCAD_Visible visible() const;
  void setVisible(const ztCAD_Visible& visible);
  /// @}

  /// The name in the form in which it is held, which takes less time to copy and to compare.
  /// @{
  ztCAD_ShortText shortName() const {
    const Objects* const made = madeObjects();
    return made ? ztCAD_ShortText(made->attributes.name()) : m_name;
  }
  void setShortName(const ztCAD_ShortText& name) {
    if (Objects* const made = madeObjects())
      made->attributes.setName(name.toString());
    else
      m_name = name;
  }
  /// @}

  /// Whether there is a coordinate system, with or without values.
  bool hasLCS() const {
    const Rare* const rare = m_rare.load(std::memory_order_acquire);
    return rare && rare->lcs;
  }
  /// A copy of the coordinate system; std::nullopt if there is none. std::nullopt removes it.
  /// @{
  std::optional<ztCAD_LCS> lcs() const {
    return hasLCS() ? std::optional(*m_rare.load(std::memory_order_relaxed)->lcs) : std::nullopt;
  }
  void setLcs(const std::optional<ztCAD_LCS>& lcs);
  /// @}

  /// Whether all values lie in the block itself.
  bool ownsNothing() const { return m_rare.load(std::memory_order_acquire) == nullptr && m_name.isShort(); }

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
  /// The values as objects. Once made, they replace the values of the block.
  struct Objects {
    ztCAD_gAttr attributes;
    ztCAD_gShowable showable;
  };

  /// What few elements have.
  struct Rare {
    ztCAD_ShortText comment;
    ztCAD_ShortText inform;
    std::unique_ptr<ztCAD_LCS> lcs;          // null: none
    std::atomic<Objects*> objects{nullptr};  // owned; null: not made
  };

  /// The objects; null if they are not made.
  Objects* madeObjects() const {
    const Rare* const rare = m_rare.load(std::memory_order_acquire);
    return rare ? rare->objects.load(std::memory_order_acquire) : nullptr;
  }
  /// The objects, which it makes if they are not there. Virtual: hosts that load the library by its name
  /// reach it, too.
  virtual Objects& objects() const;
  Rare& rare() const;
  std::unique_ptr<Objects> newObjects() const;
  void setRareText(ztCAD_ShortText Rare::*member, const ztCAD_ShortText& text);
  void writeValues(ztcad::ElementSink& element) const;
  bool readValues(const ztcad::ElementView& element);

  enum Display : std::uint8_t { HasColor = 1, HasVisible = 2, IsVisible = 4 };

  // six bytes: after the two flags of ztCAD_StateCorrect they need no word of their own
  bool m_attributesReadOk = true;
  bool m_attributesWereRead = false;
  std::uint8_t m_display = 0;  // of the values of `Display`
  std::uint8_t m_red = 0;      // colours with components above 255 are held by the objects
  std::uint8_t m_green = 0;
  std::uint8_t m_blue = 0;
  ztCAD_ShortText m_name;
  /// Owned; null: nothing rare, the usual case in a large document.
  mutable std::atomic<Rare*> m_rare{nullptr};
};
