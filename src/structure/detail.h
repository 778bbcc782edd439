#pragma once

#include <memory>
#include <optional>

#include "../core/container.h"
#include "../geometry/line.h"
#include "../geometry/mip.h"
#include "../geometry/point.h"
#include "../geometry/sphere.h"
#include "../geometry/triangle.h"
#include "../property/base.h"

/// @file
/// Details: rigid parts.

/// The geometry of a detail.
struct ZTCAD_API ztCAD_DetailContent {
  ztCAD_Cont<ztCAD_Point> points;            ///< written first
  ztCAD_Cont<ztCAD_Sphere> spheres;          ///< written as "solid", like triangles
  ztCAD_Cont<ztCAD_Triangle> triangles;      ///< solids given by vertices and facets
  ztCAD_Cont<ztCAD_Line> lines;              ///< polylines, written last
  ztCAD_Cont<ztCAD_empty_stub_class> stubs;  ///< for kinds that a detail does not hold; always empty
};

/// A rigid part: a named body of points, spheres, triangulated solids and polylines, with optional
/// mass-inertia data of the whole. The common base of details and template details. Copies are deep.
class ZTCAD_API ztCAD_cmnDetail : public ztCAD_Base,
                                  public ztCAD_ISerialize,
                                  public ztCAD_INode,
                                  public ztCAD_IBaseChecker,
                                  public ztCAD_StateCorrect,
                                  public ztCAD_INameLCS_Selector {
 public:
  /// The geometry. The reference is valid as long as the detail, also after the detail is read or assigned.
  /// @{
  ztCAD_DetailContent& content() { return *m_content; }
  const ztCAD_DetailContent& content() const { return *m_content; }
  /// @}

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

  /// "detail(prop=...)": element name and property block.
  QString& toText(QString& out, bool debugForm) const override;
  /// Points, then spheres, triangulated solids and lines, in whatever order they were added.
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// Replaces the content. False when the property block fails to read, when the mass-inertia data is absent
  /// or does not parse, when a "solid" has an unknown method (it is skipped), or when a child fails to read
  /// (it is kept). Lines of another method than "polyline" and children of other kinds are ignored.
  ///
  /// A detail without mass-inertia data can be written, but reading it back returns false.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// The outcome of the last read; false if the detail was never read. `setReadOk(true)` marks a built detail
  /// as sound.
  bool passesCheck() const { return readOk(); }

 protected:
  /// No name, no geometry, no mass-inertia data.
  ztCAD_cmnDetail();
  /// Copies everything, including the outcome of the last read.
  /// @{
  ztCAD_cmnDetail(const ztCAD_cmnDetail& other);
  ztCAD_cmnDetail& operator=(const ztCAD_cmnDetail& other);
  /// @}
  ~ztCAD_cmnDetail() override;

 private:
  std::unique_ptr<ztCAD_DetailContent> m_content;  // never null
  ztCAD_OptionalMIP m_mip;
};

/// A detail of a document or of a structure.
class ZTCAD_API ztCAD_Detail : public ztCAD_cmnDetail, public ztCAD_cmnSelector2<ztCAD_KindDetail> {
 public:
  QString lcsWord() const override;
  QString elementName() const override;
};

/// A detail kept as a template.
class ZTCAD_API ztCAD_TmplDetail : public ztCAD_cmnDetail, public ztCAD_cmnSelector2<ztCAD_KindTmplDetail> {
 public:
  QString lcsWord() const override;
  QString elementName() const override;
};
