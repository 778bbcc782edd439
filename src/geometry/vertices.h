#pragma once

#include <cstddef>
#include <vector>

#include "../property/base.h"
#include "coordinate.h"

/// @file
/// Lists of vertices.

/// A list of vertices, stored flat: x, y, z of the first, then of the second, and so on.
///
/// It has a property block like every named object, but copies, texts and XML comprise only the coordinates.
class ZTCAD_API ztCAD_Vertices : public ztCAD_Base, private ztCAD_ISerialize {
 public:
  /// Empty.
  ztCAD_Vertices() = default;
  /// Copy only the coordinates: the property block of a new list is empty, that of an assigned one unchanged.
  /// @{
  ztCAD_Vertices(const ztCAD_Vertices& other);
  ztCAD_Vertices& operator=(const ztCAD_Vertices& other);
  /// @}

  /// 3 * n reals, x y z interleaved, in the document's length unit. Any number can be set; texts omit one or
  /// two reals at the end that form no vertex.
  /// @{
  const std::vector<double>& coordinates() const { return m_coordinates; }
  void setCoordinates(const std::vector<double>& coordinates) { m_coordinates = coordinates; }
  /// @}

  /// Appends one vertex. A vertex without a position is appended as 0, 0, 0: the indices of facets still
  /// match.
  void add(const ztCAD_Vertex& vertex);
  /// Appends `count` vertices from a flat array of `count` * 3 reals, which may be part of this list. If
  /// memory runs out (`std::bad_alloc`), the list is unchanged.
  void add(const double* xyz, std::size_t count);
  /// Empties the list.
  void clear() { m_coordinates.clear(); }

  /// Storage form: a line feed, then "0, 0, 0;" and a line feed for each vertex. Diagnostic form: the same
  /// with "coord(0, 0, 0;)", between a line feed with "vertices(" and ")".
  QString& toText(QString& out, bool debugForm) const override;

  /// Replaces the list by the vertices in `text`: pieces separated by ";", each of three numbers separated by
  /// "," (further numbers are dropped). A piece that is shorter or does not convert is omitted and makes the
  /// result false; a piece without a comma is skipped. Sets the process-wide default locale (QLocale) to C.
  [[nodiscard]] bool fromText(const QString& text);

  /// Writes the element "vertices" as a child of the sink's current element.
  void writeElement(ztcad::ElementSink& parent) const;
  /// `fromText` of an element's text.
  [[nodiscard]] bool readElement(const ztcad::ElementView& element);

 private:
  std::vector<double> m_coordinates;
};
