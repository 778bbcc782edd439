#pragma once

#include "method.h"
#include "property_block.h"

/// @file
/// The base classes of all elements: name, properties, display method.

/// Common base of elements, structures, details and references: a name and the property block.
class ZTCAD_API ztCAD_Base {
 public:
  virtual ~ztCAD_Base();

  /// Whether `address` is the address of this object; containers find the element to remove by it.
  virtual bool isSame(const void* address) const { return address == this; }

  /// Name, description, colour, visibility and an optional coordinate system. The reference is valid as long
  /// as the object.
  /// @{
  const ztCAD_cmnProperty& property() const { return m_property; }
  ztCAD_cmnProperty& property() { return m_property; }
  void setProperty(const ztCAD_cmnProperty& property) { m_property = property; }
  /// @}

  /// The name, part of the property block: `property().attributes().name()`.
  /// @{
  const QString& name() const { return m_property.attributes().name(); }
  void setName(const QString& name) { m_property.attributes().setName(name); }
  /// @}

 protected:
  ztCAD_Base() = default;
  /// Sets the name, whether it is free or not.
  /// @param nameIsFree output: whether the name was not in the name registry (always true)
  ztCAD_Base(const QString& name, bool& nameIsFree);
  ztCAD_Base(const ztCAD_Base&) = default;
  ztCAD_Base& operator=(const ztCAD_Base&) = default;

 private:
  ztCAD_cmnProperty m_property;
};

/// Common base of the geometric elements: the display method. Copies are deep.
class ZTCAD_API ztCAD_baseElement {
 public:
  virtual ~ztCAD_baseElement();

  /// How the element is constructed or displayed. The reference is valid as long as the element.
  /// @{
  const ztCAD_gMethod& method() const { return m_method; }
  ztCAD_gMethod& method() { return m_method; }
  void setMethod(const ztCAD_gMethod& method) { m_method = method; }
  /// @}

 protected:
  /// An empty method.
  ztCAD_baseElement() = default;
  /// With `method` as its method.
  explicit ztCAD_baseElement(const QString& method) : m_method(method) {}
  ztCAD_baseElement(const ztCAD_baseElement&) = default;
  ztCAD_baseElement& operator=(const ztCAD_baseElement&) = default;

 private:
  ztCAD_gMethod m_method;
};
