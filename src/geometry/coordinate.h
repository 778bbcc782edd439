#pragma once

#include "../core/node.h"

/// @file
/// Coordinates and vertices.

/// A position in space, in the document's length unit, or no position.
class ZTCAD_API ztCAD_Coord : public ztCAD_ISerialize {
 public:
  /// Not valid, components 0.
  ztCAD_Coord() = default;
  /// Valid, with any reals; the range is not checked.
  ztCAD_Coord(double x, double y, double z) : m_isValid(true), m_x(x), m_y(y), m_z(z) {}

  /// Whether there is a position.
  bool isValid() const { return m_isValid; }
  /// The components; 0 if there is no position.
  /// @{
  double x() const { return m_x; }
  double y() const { return m_y; }
  double z() const { return m_z; }
  /// @}

  /// Sets the position, which makes it valid.
  void set(double x, double y, double z) { *this = ztCAD_Coord(x, y, z); }

  /// Storage form "1.5, 0, -2;", diagnostic form "coord(1.5, 0, -2;)", with six significant digits. Without a
  /// position nothing and "coord".
  QString& toText(QString& out, bool debugForm) const override;

  /// Reads one to three numbers separated by commas; absent components become 0. False, with nothing changed,
  /// for any other number of parts and for text that does not convert. Sets the process-wide default locale
  /// (QLocale) to C.
  [[nodiscard]] bool fromText(const QString& text);

 private:
  bool m_isValid = false;
  double m_x = 0;
  double m_y = 0;
  double m_z = 0;
};

/// A vertex of a polyline or triangulated solid.
class ZTCAD_API ztCAD_Vertex : public ztCAD_ISerialize {
 public:
  /// Without a position.
  ztCAD_Vertex() = default;
  /// At `coord`.
  explicit ztCAD_Vertex(const ztCAD_Coord& coord) : m_coord(coord) {}

  /// The position of the vertex; not valid if it has none.
  /// @{
  const ztCAD_Coord& coord() const { return m_coord; }
  void setCoord(const ztCAD_Coord& coord) { m_coord = coord; }
  /// @}

  /// The text of the coordinate.
  QString& toText(QString& out, bool debugForm) const override;

 private:
  ztCAD_Coord m_coord;
};
