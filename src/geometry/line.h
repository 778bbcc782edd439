#pragma once

#include "../core/container.h"
#include "../property/base.h"
#include "vertices.h"

/// @file
/// Polylines.

/// A polyline: vertices joined in their order. What lines and template lines have in common.
///
/// One XML element with the child "vertices". A polyline of fewer than two vertices is none the less one.
class ZTCAD_API ztCAD_commonLine : public ztCAD_Base,
                                   public ztCAD_baseElement,
                                   public ztCAD_ISerialize,
                                   public ztCAD_INode,
                                   public ztCAD_IBaseChecker,
                                   public ztCAD_StateCorrect,
                                   public ztCAD_INameLCS_Selector {
 public:
  /// The line's own list, which stays good as long as the line; setting copies into it.
  /// @{
  const ztCAD_Vertices& vertices() const { return m_vertices; }
  void setVertices(const ztCAD_Vertices& vertices) { m_vertices = vertices; }
  /// @}

  /// "polyline(method=pointXYZprop=...);" with the property block and the vertices in the form that is asked
  /// for.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False when no direct child is "vertices", when the first one's text does not parse, or when the property
  /// block does not read. The vertices that could be read are kept.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// Whether the coordinates are whole triples, as the check of structures asks it.
  bool hasWholeVertices() const { return m_vertices.coordinates().size() % 3 == 0; }

 protected:
  ztCAD_commonLine() = default;
  /// Through copies of these vertices.
  /// @param nameIsFree output, always true
  ztCAD_commonLine(const QString& name, const ztCAD_Vertices& vertices, bool& nameIsFree);

 private:
  ztCAD_Vertices m_vertices;
};

/// A polyline of a document, of a structure or of a detail.
class ZTCAD_API ztCAD_Line : public ztCAD_commonLine, public ztCAD_cmnSelector2<ztCAD_KindLine> {
 public:
  /// No name, no vertices.
  ztCAD_Line() = default;
  /// Through copies of these vertices.
  /// @param nameIsFree output, always true
  ztCAD_Line(const QString& name, const ztCAD_Vertices& vertices, bool& nameIsFree)
      : ztCAD_commonLine(name, vertices, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A polyline kept as a template.
class ZTCAD_API ztCAD_TmplLine : public ztCAD_commonLine, public ztCAD_cmnSelector2<ztCAD_KindTmplLine> {
 public:
  /// No name, no vertices.
  ztCAD_TmplLine() = default;
  /// The vertices of `source` under a new name. Only the geometry is taken over, not the property block: a
  /// template point takes both, a template line and a template solid do not.
  /// @param nameIsFree output, always true
  ztCAD_TmplLine(const QString& name, const ztCAD_commonLine& source, bool& nameIsFree)
      : ztCAD_commonLine(name, source.vertices(), nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
