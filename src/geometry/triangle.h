#pragma once

#include "../core/container.h"
#include "faces.h"
#include "solid.h"
#include "vertices.h"

/// @file
/// Triangulated solids.

/// A triangulated surface: vertices, and facets that refer to them by index. What solids and template solids
/// of this kind have in common. Indices are not compared with the number of vertices.
class ZTCAD_API ztCAD_commonTriangle : public ztCAD_Solid, public ztCAD_INameLCS_Selector {
 public:
  /// The solid's own list of vertices, which stays good as long as the solid; setting copies into it.
  /// @{
  const ztCAD_Vertices& vertices() const { return m_vertices; }
  void setVertices(const ztCAD_Vertices& vertices) { m_vertices = vertices; }
  /// @}

  /// The solid's own list of facets, likewise.
  /// @{
  const ztCAD_Faces& faces() const { return m_faces; }
  void setFaces(const ztCAD_Faces& faces) { m_faces = faces; }
  /// @}

  /// "triangulation(method=pointXYZprop=... ,...);" with all parts in the form that is asked for.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  /// False when "vertices" or "faces" is missing among the direct children, when the first one's text does
  /// not parse, or when the property block does not read. What could be read is kept. Mass-inertia data that
  /// is absent or bad is no failure.
  ///
  /// Runs in parallel mode 0 and restores the mode on every way out.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// The outcome of the last read; of a solid that was built, whether its lists are whole triples.
  bool passesCheck() const;

 protected:
  ztCAD_commonTriangle() = default;
  /// With copies of these lists.
  /// @param nameIsFree output, always true
  ztCAD_commonTriangle(const QString& name, const ztCAD_Vertices& vertices, const ztCAD_Faces& faces,
                       bool& nameIsFree);

 private:
  ztCAD_Vertices m_vertices;
  ztCAD_Faces m_faces;
};

/// A triangulated solid of a document, of a structure or of a detail.
class ZTCAD_API ztCAD_Triangle : public ztCAD_commonTriangle, public ztCAD_cmnSelector2<ztCAD_KindTriangle> {
 public:
  /// No name, empty lists.
  ztCAD_Triangle() = default;
  /// With copies of these lists.
  /// @param nameIsFree output, always true
  ztCAD_Triangle(const QString& name, const ztCAD_Vertices& vertices, const ztCAD_Faces& faces,
                 bool& nameIsFree)
      : ztCAD_commonTriangle(name, vertices, faces, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A triangulated solid kept as a template.
class ZTCAD_API ztCAD_TmplTriangle : public ztCAD_commonTriangle,
                                     virtual public ztCAD_cmnSelector2<ztCAD_KindTmplTriangle> {
 public:
  /// No name, empty lists.
  ztCAD_TmplTriangle() = default;
  /// The lists of `source` under a new name. Only the geometry is taken over, neither the property block nor
  /// the mass-inertia data: a template point takes its properties along, a template line and a template solid
  /// do not.
  /// @param nameIsFree output, always true
  ztCAD_TmplTriangle(const QString& name, const ztCAD_commonTriangle& source, bool& nameIsFree)
      : ztCAD_commonTriangle(name, source.vertices(), source.faces(), nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
