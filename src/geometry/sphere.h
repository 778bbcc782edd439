#pragma once

#include <optional>

#include "coordinate.h"
#include "solid.h"

/// @file
/// Spheres.

/// A solid given by a centre and a radius. There is no template of it.
class ZTCAD_API ztCAD_Sphere : public ztCAD_Solid, public ztCAD_INameLCS_Selector {
 public:
  /// No centre, no radius.
  ztCAD_Sphere() = default;
  /// A sphere around `center`.
  /// @param radius in the document's length unit, any real; the file stores only that there is one
  /// @param nameIsFree output, always true
  ztCAD_Sphere(const QString& name, const ztCAD_Coord& center, double radius, bool& nameIsFree);

  /// The centre; not valid where there is none.
  /// @{
  const ztCAD_Coord& center() const { return m_center; }
  void setCenter(const ztCAD_Coord& center) { m_center = center; }
  /// @}

  /// Whether there is a radius.
  bool hasRadius() const { return m_hasRadius; }
  /// The radius in the document's length unit; nothing where there is none.
  /// @{
  std::optional<double> radius() const { return m_hasRadius ? std::optional(m_radius) : std::nullopt; }
  void setRadius(std::optional<double> radius);
  /// @}

  /// For people: method, property block, mass-inertia data, centre, and 1 or 0 for whether there is a radius.
  /// There is no storage form.
  QString& toText(QString& out, bool debugForm) const override;
  /// The attribute "radius" is written as "1" or "0": the format stores whether a radius was given, not its
  /// value. A sphere that was saved and loaded has radius 1.
  void write(ztcad::ElementSink& parent) const override;
  /// False when "center" is absent or does not parse, when "radius" is absent or empty, or when the property
  /// block does not read. A radius that is no number counts as 0. What could be read is kept. Sets the
  /// default locale to C.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// The outcome of the last read; of a sphere that was built, whether it has centre and radius.
  bool passesCheck() const { return wasRead() ? readOk() : m_center.isValid() && m_hasRadius; }

  QString lcsWord() const override;
  QString elementName() const override;

 private:
  ztCAD_Coord m_center;
  bool m_hasRadius = false;
  double m_radius = 0;
};
