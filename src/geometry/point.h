#pragma once

#include "../core/container.h"
#include "../property/base.h"
#include "coordinate.h"

/// @file
/// Points.

/// A named position: what points and template points have in common.
///
/// One XML element without children; the position is the attribute "center", empty for a point without one.
class ZTCAD_API ztCAD_commonPoint : public ztCAD_Base,
                                    public ztCAD_baseElement,
                                    public ztCAD_ISerialize,
                                    public ztCAD_INode,
                                    public ztCAD_IBaseChecker,
                                    public ztCAD_StateCorrect,
                                    public ztCAD_INameLCS_Selector {
 public:
  /// The position; not valid in a default-constructed point.
  /// @{
  const ztCAD_Coord& center() const { return m_center; }
  void setCenter(const ztCAD_Coord& center) { m_center = center; }
  /// @}

  /// Storage form: that of the centre. For people: method, property block and centre.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False when "center" is absent or is not one to three numbers, or when the property block does not read.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// The outcome of the last read; of a point that was built, whether it has a position.
  bool passesCheck() const { return wasRead() ? readOk() : m_center.isValid(); }

 protected:
  /// No name, no position.
  ztCAD_commonPoint();
  /// At that position.
  /// @param nameIsFree output, always true
  ztCAD_commonPoint(const QString& name, const ztCAD_Coord& center, bool& nameIsFree);

 private:
  ztCAD_Coord m_center;
};

/// A point of a document, of a structure or of a detail.
class ZTCAD_API ztCAD_Point : public ztCAD_commonPoint, public ztCAD_cmnSelector2<ztCAD_KindPoint> {
 public:
  /// No name, no position.
  ztCAD_Point() = default;
  /// At that position.
  /// @param nameIsFree output, always true: nothing adds names to the registry that is asked
  ztCAD_Point(const QString& name, const ztCAD_Coord& center, bool& nameIsFree)
      : ztCAD_commonPoint(name, center, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A point kept as a template, to which references are made by name.
class ZTCAD_API ztCAD_TmplPoint : public ztCAD_commonPoint, public ztCAD_cmnSelector2<ztCAD_KindTmplPoint> {
 public:
  /// No name, no position.
  ztCAD_TmplPoint() = default;
  /// Centre and property block of `source`, under a new name.
  /// @param nameIsFree output, always true
  ztCAD_TmplPoint(const QString& name, const ztCAD_commonPoint& source, bool& nameIsFree);

  QString lcsWord() const override;
  QString elementName() const override;
};
