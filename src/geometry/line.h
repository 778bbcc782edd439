#pragma once

#include "../core/container.h"
#include "../property/base.h"
#include "vertices.h"

/// @file
/// Polylines.

/// A polyline: vertices joined in order; the common base of lines and template lines.
///
/// One XML element with the child "vertices". Polylines of fewer than two vertices are valid.
class ZTCAD_API ztCAD_commonLine : public ztCAD_Base,
                                   public ztCAD_baseElement,
                                   public ztCAD_ISerialize,
                                   public ztCAD_INode,
                                   public ztCAD_IBaseChecker,
                                   public ztCAD_StateCorrect,
                                   public ztCAD_INameLCS_Selector {
 public:
  /// The vertices. The reference is valid as long as the line; setting copies the coordinates.
  /// @{
  const ztCAD_Vertices& vertices() const { return m_vertices; }
  void setVertices(const ztCAD_Vertices& vertices) { m_vertices = vertices; }
  /// @}

  /// "polyline(method=pointXYZprop=...);" with the property block and the vertices in the requested form.
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False if no direct child is "vertices", if the text of the first one does not parse, or if the property
  /// block does not read. The vertices that could be read are kept.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// Whether the coordinates are whole triples; used by the check of structures.
  bool hasWholeVertices() const { return m_vertices.coordinates().size() % 3 == 0; }

 protected:
  ztCAD_commonLine() = default;
  /// With a copy of `vertices`.
  /// @param nameIsFree output, always true
  ztCAD_commonLine(const QString& name, const ztCAD_Vertices& vertices, bool& nameIsFree);

 private:
  ztCAD_Vertices m_vertices;
};

/// A polyline of a document, structure or detail.
class ZTCAD_API ztCAD_Line : public ztCAD_commonLine, public ztCAD_cmnSelector2<ztCAD_KindLine> {
 public:
  /// No name, no vertices.
  ztCAD_Line() = default;
  /// With a copy of `vertices`.
  /// @param nameIsFree output, always true
  ztCAD_Line(const QString& name, const ztCAD_Vertices& vertices, bool& nameIsFree)
      : ztCAD_commonLine(name, vertices, nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A polyline stored as a template.
class ZTCAD_API ztCAD_TmplLine : public ztCAD_commonLine, public ztCAD_cmnSelector2<ztCAD_KindTmplLine> {
 public:
  /// No name, no vertices.
  ztCAD_TmplLine() = default;
  /// Copies the vertices of `source` under a new name. The property block is not copied: only template points
  /// copy that.
  /// @param nameIsFree output, always true
  ztCAD_TmplLine(const QString& name, const ztCAD_commonLine& source, bool& nameIsFree)
      : ztCAD_commonLine(name, source.vertices(), nameIsFree) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
