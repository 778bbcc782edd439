#pragma once

#include <optional>

#include "../property/base.h"
#include "mip.h"

/// @file
/// The common base of all solids.

/// The optional mass-inertia data of a solid.
class ZTCAD_API ztCAD_cmnSolid {
 public:
  /// Whether there is mass-inertia data.
  bool hasMIP() const { return m_mip.isSet(); }
  /// A copy of the data; std::nullopt if there is none. std::nullopt clears the data; an incomplete record is
  /// refused: nothing changes.
  /// @{
  std::optional<ztCAD_MIP> mip() const { return m_mip.record(); }
  void setMip(const std::optional<ztCAD_MIP>& mip) { m_mip.setRecord(mip); }
  /// @}
  /// The data itself, which lives as long as the element; null if there is none.
  const ztCAD_MIP* mipIfSet() const { return m_mip.recordIfSet(); }

 protected:
  ztCAD_cmnSolid() = default;
  ztCAD_cmnSolid(const ztCAD_cmnSolid&) = default;
  ztCAD_cmnSolid& operator=(const ztCAD_cmnSolid&) = default;
  ~ztCAD_cmnSolid() = default;

  /// Sets the attribute "MIP" if there is data.
  void writeMip(ztcad::ElementSink& element) const { m_mip.write(element); }
  /// Takes the data from the attribute "MIP". One that is absent or does not parse leaves the data unchanged
  /// and is no failure.
  void readMip(const ztcad::ElementView& element);
  /// Appends the record's text; nothing if there is no data.
  void appendMipText(QString& out, bool debugForm) const { m_mip.toText(out, debugForm); }

 private:
  ztCAD_OptionalMIP m_mip;
};

/// Base of all solids. In a file they are elements "solid" (templates "templateSolid"); the attribute
/// "method" tells spheres from triangulated solids.
class ZTCAD_API ztCAD_Solid : public ztCAD_Base,
                              public ztCAD_baseElement,
                              public ztCAD_ISerialize,
                              public ztCAD_INode,
                              public ztCAD_IBaseChecker,
                              public ztCAD_StateCorrect,
                              public ztCAD_cmnSolid {
 public:
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }

 protected:
  ztCAD_Solid() = default;
  /// Sets the name.
  /// @param nameIsFree output, always true
  ztCAD_Solid(const QString& name, bool& nameIsFree) : ztCAD_Base(name, nameIsFree) {}
};
