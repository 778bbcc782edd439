#pragma once

#include "method.h"
#include "property_block.h"

/// @file
/// The roots of all elements: name, properties, display method.

/// Common root of elements, structures, details and references: all of them are named and carry the property
/// block.
class ZTCAD_API ztCAD_Base {
 public:
  virtual ~ztCAD_Base();

  /// Whether `address` is this very object; how containers find what they are to remove.
  virtual bool isSame(const void* address) const { return address == this; }

  /// Description, colour, visibility and perhaps a coordinate system. The reference stays good as long as the object.
  /// @{
  const ztCAD_cmnProperty& property() const { return m_property; }
  ztCAD_cmnProperty& property() { return m_property; }
  void setProperty(const ztCAD_cmnProperty& property) { m_property = property; }
  /// @}

  /// The name, which lies in the property block: `property().attributes().name()`.
  /// @{
  const QString& name() const { return m_property.attributes().name(); }
  void setName(const QString& name) { m_property.attributes().setName(name); }
  /// @}

 protected:
  ztCAD_Base() = default;
  /// Gives the name, whether it is free or not.
  /// @param nameIsFree output: whether the name registry did not hold the name (always true)
  ztCAD_Base(const QString& name, bool& nameIsFree);
  ztCAD_Base(const ztCAD_Base&) = default;
  ztCAD_Base& operator=(const ztCAD_Base&) = default;

 private:
  ztCAD_cmnProperty m_property;
};

/// Root of the geometric elements: carries the display method. Copies are deep.
class ZTCAD_API ztCAD_baseElement {
 public:
  virtual ~ztCAD_baseElement();

  /// How the element is to be made or shown. The reference stays good as long as the element.
  /// @{
  const ztCAD_gMethod& method() const { return m_method; }
  ztCAD_gMethod& method() { return m_method; }
  void setMethod(const ztCAD_gMethod& method) { m_method = method; }
  /// @}

 protected:
  /// An empty method.
  ztCAD_baseElement() = default;
  /// With this word as its method.
  explicit ztCAD_baseElement(const QString& method) : m_method(method) {}
  ztCAD_baseElement(const ztCAD_baseElement&) = default;
  ztCAD_baseElement& operator=(const ztCAD_baseElement&) = default;

 private:
  ztCAD_gMethod m_method;
};

namespace ztcad {

/// The attributes that all geometric elements have in common: property block, then display method.
void writeBaseParts(const ztCAD_Base& base, const ztCAD_baseElement& element, ElementSink& sink);

/// Reads both. The property block alone decides the result: a "method" that is present is taken, an absent
/// one is no failure.
bool readBaseParts(ztCAD_Base& base, ztCAD_baseElement& element, const ElementView& view, bool& fault);

}  // namespace ztcad
