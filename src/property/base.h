#pragma once

#include "method.h"
#include "property_block.h"

/// @file
/// The base classes of all elements: name, properties, display method.

/// Common base of elements, structures, details and references: a name and the property block.
class ZTCAD_API ztCAD_Base {
 public:
  virtual ~ztCAD_Base() = default;

  /// Whether `address` is the address of this object; containers find the element to remove by it.
  virtual bool isSame(const void* address) const { return address == this; }

  /// Name, description, colour, visibility and an optional coordinate system. The reference is valid as long
  /// as the object.
  /// @{
  const ztCAD_cmnProperty& property() const { return m_property; }
  ztCAD_cmnProperty& property() { return m_property; }
  void setProperty(const ztCAD_cmnProperty& property) { m_property = property; }
  /// @}

  /// The name, part of the property block. `shortName` takes less time, see `ztCAD_cmnProperty`.
  /// @{
  QString name() const { return m_property.name(); }
  ztCAD_ShortText shortName() const { return m_property.shortName(); }
  void setName(const QString& name) { m_property.setName(name); }
  void setShortName(const ztCAD_ShortText& name) { m_property.setShortName(name); }
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

  /// How the element is constructed or displayed. The references are valid as long as the element. That of
  /// the const function may be of an object that elements with the same method share, which never changes;
  /// the other function first gives the element a method of its own, and may throw `std::bad_alloc`.
  /// @{
  const ztCAD_gMethod& method() const { return *m_method; }
  ztCAD_gMethod& method() { return ownMethod(); }
  void setMethod(const ztCAD_gMethod& method) { assignMethod(method); }
  /// @}

 protected:
  /// An empty method.
  ztCAD_baseElement();
  /// With `method` as its method.
  explicit ztCAD_baseElement(const QString& method);
  /// Elements with a usual method share it; any other method is copied.
  /// @{
  ztCAD_baseElement(const ztCAD_baseElement& other);
  ztCAD_baseElement& operator=(const ztCAD_baseElement& other);
  /// @}

 private:
  // virtual: hosts that open the library by its name reach them, too
  /// The method that belongs to this element alone; makes it if there is none.
  virtual ztCAD_gMethod& ownMethod();
  virtual void assignMethod(const ztCAD_gMethod& method);

  const ztCAD_gMethod* m_method;  // that of a usual word is shared by all elements, any other is owned
};
