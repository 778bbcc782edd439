#pragma once

#include "../core/node.h"

/// @file
/// Positions, and the corners that lie there.

/// A position in space, in the document's length unit, or no position yet.
class ZTCAD_API ztCAD_Coord : public ztCAD_ISerialize {
 public:
  /// Not valid, components 0.
  ztCAD_Coord() = default;
  /// Valid; any reals, no range is checked.
  ztCAD_Coord(double x, double y, double z) : m_isValid(true), m_x(x), m_y(y), m_z(z) {}

  /// Whether the components hold a value.
  bool isValid() const { return m_isValid; }
  /// The components; 0 while there is no value.
  /// @{
  double x() const { return m_x; }
  double y() const { return m_y; }
  double z() const { return m_z; }
  /// @}

  /// Gives it a value; valid from now on.
  void set(double x, double y, double z) { *this = ztCAD_Coord(x, y, z); }

  /// Storage form "1.5, 0, -2;", for people "coord(1.5, 0, -2;)". Six significant digits. Without a value
  /// nothing, for people "coord".
  QString& toText(QString& out, bool debugForm) const override;

  /// Takes one, two or three numbers separated by commas; components that are not given are 0. False, and
  /// nothing changed, for any other count and for text that does not convert. Sets the default locale to C.
  bool fromText(const QString& text);

 private:
  bool m_isValid = false;
  double m_x = 0;
  double m_y = 0;
  double m_z = 0;
};

/// A corner of a polyline or of a triangulated solid.
class ZTCAD_API ztCAD_Vertex : public ztCAD_ISerialize {
 public:
  /// At no position yet.
  ztCAD_Vertex() = default;
  /// At that position.
  explicit ztCAD_Vertex(const ztCAD_Coord& coord) : m_coord(coord) {}

  /// Where the vertex lies; not valid for one without a position.
  /// @{
  const ztCAD_Coord& coord() const { return m_coord; }
  void setCoord(const ztCAD_Coord& coord) { m_coord = coord; }
  /// @}

  /// The text of its coordinate.
  QString& toText(QString& out, bool debugForm) const override;

 private:
  ztCAD_Coord m_coord;
};
