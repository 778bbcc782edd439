#pragma once

#include "../core/container.h"
#include "../property/base.h"
#include "coordinate.h"

/// @file
/// Points.

/// A named position; the common base of points and template points.
///
/// One XML element without children. The position is the attribute "center", empty for a point without a
/// position.
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

  /// Storage form: that of the centre. Diagnostic form: method, property block and centre.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False if "center" is absent or is not one to three numbers, or if the property block does not read. All
  /// parts that could be read are kept. Sets the process-wide default locale (QLocale) to C.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// For a point that was read, whether the last read succeeded; else whether it has a position.
  bool passesCheck() const { return wasRead() ? readOk() : m_center.isValid(); }

  /// Whether the point owns no memory, so that its destructor has nothing to do: most points of a large
  /// document. A container does not destroy such points but only frees their memory.
  bool ownsNothing() const { return property().ownsNothing() && method().isShared(); }

 protected:
  /// No name, no position.
  ztCAD_commonPoint();
  /// At `center`.
  /// @param nameIsFree output, always true
  ztCAD_commonPoint(const QString& name, const ztCAD_Coord& center, bool& nameIsFree);

 private:
  ztCAD_Coord m_center;
};

/// A point of a document, structure or detail.
class ZTCAD_API ztCAD_Point : public ztCAD_commonPoint, public ztCAD_cmnSelector2<ztCAD_KindPoint> {
 public:
  /// No name, no position.
  ztCAD_Point() = default;
  /// At `center`.
  /// @param nameIsFree output, always true: nothing adds names to the name registry
  ztCAD_Point(const QString& name, const ztCAD_Coord& center, bool& nameIsFree)
      : ztCAD_commonPoint(name, center, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A point stored as a template, which references refer to by name.
class ZTCAD_API ztCAD_TmplPoint : public ztCAD_commonPoint, public ztCAD_cmnSelector2<ztCAD_KindTmplPoint> {
 public:
  /// No name, no position.
  ztCAD_TmplPoint() = default;
  /// Copies the centre and the property block of `source` under a new name.
  /// @param nameIsFree output, always true
  ztCAD_TmplPoint(const QString& name, const ztCAD_commonPoint& source, bool& nameIsFree);

  QString lcsWord() const override;
  QString elementName() const override;
};
