#pragma once

#include <cstddef>
#include <vector>

#include "../property/base.h"
#include "coordinate.h"

/// @file
/// Lists of vertices.

/// A list of vertices, stored flat: x, y, z of the first, x, y, z of the second, and so on.
///
/// It has a property block like every named object, but copies and texts concern the coordinates alone.
class ZTCAD_API ztCAD_Vertices : public ztCAD_Base, private ztCAD_ISerialize {
 public:
  /// Empty.
  ztCAD_Vertices() = default;
  /// Copies the coordinates; the property block is a new one, or stays as it was.
  /// @{
  ztCAD_Vertices(const ztCAD_Vertices& other);
  ztCAD_Vertices& operator=(const ztCAD_Vertices& other);
  /// @}

  /// 3 * n reals, x y z interleaved, in the document's length unit.
  const std::vector<double>& coordinates() const { return m_coordinates; }
  /// Takes the reals as they are; the texts leave out a last one or two that make no vertex.
  void setCoordinates(const std::vector<double>& coordinates) { m_coordinates = coordinates; }

  /// Appends one vertex. One without a value counts as 0, 0, 0, so that the indices of facets stay in step.
  void add(const ztCAD_Vertex& vertex);
  /// Appends `count` vertices of a flat array of `count` * 3 reals, which may be this list's own. Without memory the list
  /// stays as it was.
  void add(const double* xyz, std::size_t count);
  /// Empties the list.
  void clear() { m_coordinates.clear(); }

  /// Storage form: a line feed, then "0, 0, 0;" and a line feed for each vertex. For people the same lines as
  /// "coord(0, 0, 0;)" between "vertices(" and ")".
  QString& toText(QString& out, bool debugForm) const override;

  /// Replaces the list by the vertices in `text`: pieces separated by ";", each of three numbers separated by
  /// "," (further ones are dropped). A piece that is shorter or does not convert is left out and makes the
  /// result false; one without a comma is passed over. Sets the default locale to C.
  bool fromText(const QString& text);

  /// The element "vertices" below the element at which the sink stands.
  void writeElement(ztcad::ElementSink& parent) const;
  /// `fromText` of an element's text.
  bool readElement(const ztcad::ElementView& element);

 private:
  std::vector<double> m_coordinates;
};
