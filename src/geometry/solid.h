#pragma once

#include <optional>

#include "../property/base.h"
#include "mip.h"

/// @file
/// What all solids have in common.

/// The mass-inertia data that a solid may carry.
class ZTCAD_API ztCAD_cmnSolid {
 public:
  /// Whether there is mass-inertia data.
  bool hasMIP() const { return m_hasMip; }
  /// A copy of the data; nothing where there is none.
  std::optional<ztCAD_MIP> mip() const { return m_hasMip ? std::optional(m_mip) : std::nullopt; }
  /// Marks the data present and copies the record. One that is not complete could not be written and is
  /// refused: nothing changes.
  void setMip(const ztCAD_MIP& mip);

 protected:
  ztCAD_cmnSolid() = default;
  ztCAD_cmnSolid(const ztCAD_cmnSolid&) = default;
  ztCAD_cmnSolid& operator=(const ztCAD_cmnSolid&) = default;
  ~ztCAD_cmnSolid() = default;

  /// Sets the attribute "MIP" when there is data.
  void writeMip(ztcad::ElementSink& element) const;
  /// Takes the attribute when it is there and parses; otherwise the data stays as it was, and that is no
  /// failure.
  void readMip(const ztcad::ElementView& element);
  /// Appends the record's text; nothing when there is no data.
  void appendMipText(QString& out, bool debugForm) const;

 private:
  bool m_hasMip = false;
  ztCAD_MIP m_mip;
};

/// Base of everything that may carry mass-inertia data. In a file all solids are elements "solid" (templates
/// "templateSolid") and are told apart by their "method".
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
  /// Gives the name.
  /// @param nameIsFree output, always true
  ztCAD_Solid(const QString& name, bool& nameIsFree) : ztCAD_Base(name, nameIsFree) {}
};
