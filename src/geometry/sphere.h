#pragma once

#include <optional>

#include "coordinate.h"
#include "solid.h"

/// @file
/// Spheres.

/// A solid given by a centre and a radius. There are no template spheres.
class ZTCAD_API ztCAD_Sphere : public ztCAD_Solid, public ztCAD_INameLCS_Selector {
 public:
  /// No centre, no radius.
  ztCAD_Sphere() = default;
  /// A sphere around `center`.
  /// @param radius in the document's length unit, any real; a file stores only that there is one (see
  ///               `write`)
  /// @param nameIsFree output, always true
  ztCAD_Sphere(const QString& name, const ztCAD_Coord& center, double radius, bool& nameIsFree);

  /// The centre; not valid if there is none.
  /// @{
  const ztCAD_Coord& center() const { return m_center; }
  void setCenter(const ztCAD_Coord& center) { m_center = center; }
  /// @}

  /// Whether there is a radius.
  bool hasRadius() const { return m_hasRadius; }
  /// The radius in the document's length unit; std::nullopt if there is none.
  /// @{
  std::optional<double> radius() const { return m_hasRadius ? std::optional(m_radius) : std::nullopt; }
  void setRadius(std::optional<double> radius);
  /// @}

  /// Diagnostic form: method, property block, mass-inertia data, centre, and 1 or 0 for whether there is a
  /// radius. The storage form is empty.
  QString& toText(QString& out, bool debugForm) const override;
  /// Writes the attribute "radius" as "1" or "0": the format stores whether there is a radius, not its value.
  /// After saving and loading, a sphere has the radius 1, or 0 if it had none.
  void write(ztcad::ElementSink& parent) const override;
  /// False if "center" is absent or does not parse, if "radius" is absent or empty, or if the property block
  /// does not read. A radius that is no number counts as 0. All parts that could be read are kept. Sets the
  /// process-wide default locale (QLocale) to C.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// For a sphere that was read, whether the last read succeeded; else whether it has a centre and a radius.
  bool passesCheck() const { return wasRead() ? readOk() : m_center.isValid() && m_hasRadius; }

  QString lcsWord() const override;
  QString elementName() const override;

 private:
  ztCAD_Coord m_center;
  bool m_hasRadius = false;
  double m_radius = 0;
};
