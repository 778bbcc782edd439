#pragma once

#include "../core/container.h"
#include "faces.h"
#include "solid.h"
#include "vertices.h"

/// @file
/// Triangulated solids.

/// A triangulated surface: vertices, and facets that refer to them by index; the common base of triangulated
/// solids and their templates. Indices are not compared with the number of vertices.
class ZTCAD_API ztCAD_commonTriangle : public ztCAD_Solid, public ztCAD_INameLCS_Selector {
 public:
  /// The vertices. The reference is valid as long as the solid; setting copies the coordinates.
  /// @{
  const ztCAD_Vertices& vertices() const { return m_vertices; }
  void setVertices(const ztCAD_Vertices& vertices) { m_vertices = vertices; }
  /// @}

  /// The facets. The reference is valid as long as the solid; setting copies the list.
  /// @{
  const ztCAD_Faces& faces() const { return m_faces; }
  void setFaces(const ztCAD_Faces& faces) { m_faces = faces; }
  /// @}

  /// "triangulation(method=pointXYZprop=... ,...);" with all parts in the requested form.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  /// False if no direct child is "vertices" or none is "faces", if the text of the first one of either does
  /// not parse, or if the property block does not read. All parts that could be read are kept. Absent or
  /// invalid mass-inertia data is no failure.
  ///
  /// Sets the parallel mode to 0 for the call.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// For a solid that was read, whether the last read succeeded; else whether both lists are whole triples.
  bool passesCheck() const;

 protected:
  ztCAD_commonTriangle() = default;
  /// With copies of both lists.
  /// @param nameIsFree output, always true
  ztCAD_commonTriangle(const QString& name, const ztCAD_Vertices& vertices, const ztCAD_Faces& faces,
                       bool& nameIsFree);

 private:
  ztCAD_Vertices m_vertices;
  ztCAD_Faces m_faces;
};

/// A triangulated solid of a document, structure or detail.
class ZTCAD_API ztCAD_Triangle : public ztCAD_commonTriangle, public ztCAD_cmnSelector2<ztCAD_KindTriangle> {
 public:
  /// No name, empty lists.
  ztCAD_Triangle() = default;
  /// With copies of both lists.
  /// @param nameIsFree output, always true
  ztCAD_Triangle(const QString& name, const ztCAD_Vertices& vertices, const ztCAD_Faces& faces,
                 bool& nameIsFree)
      : ztCAD_commonTriangle(name, vertices, faces, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A triangulated solid stored as a template.
class ZTCAD_API ztCAD_TmplTriangle : public ztCAD_commonTriangle,
                                     virtual public ztCAD_cmnSelector2<ztCAD_KindTmplTriangle> {
 public:
  /// No name, empty lists.
  ztCAD_TmplTriangle() = default;
  /// Copies the lists of `source` under a new name. Neither the property block nor the mass-inertia data is
  /// copied: only template points copy their properties.
  /// @param nameIsFree output, always true
  ztCAD_TmplTriangle(const QString& name, const ztCAD_commonTriangle& source, bool& nameIsFree)
      : ztCAD_commonTriangle(name, source.vertices(), source.faces(), nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
