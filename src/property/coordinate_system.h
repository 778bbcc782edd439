#pragma once

#include <vector>

#include "../core/node.h"

/// @file
/// Coordinate systems.

/// A coordinate system: twelve reals in a fixed order that the library does not interpret (by convention the
/// origin, then the three axes), or no values.
///
/// Stored as one attribute of its element, "LCS" for a local system and "MCS" for the model system. The text
/// is "CS" and the values with six significant digits each, or empty.
class ZTCAD_API ztCAD_LCS : public ztCAD_ISerialize, private ztCAD_INode {
 public:
  /// The number of values that can be read. Systems with another number can be constructed and written.
  static constexpr int valueCount = 12;
  /// Two values count as equal if they differ by less than this.
  static constexpr double tolerance = 1e-08;

  /// No values, local.
  ztCAD_LCS() = default;
  /// With `values`, whatever their number.
  ztCAD_LCS(bool isLocal, const std::vector<double>& values) : m_values(values), m_isLocal(isLocal) {}

  /// The values; empty if there are none. Any number can be set.
  /// @{
  const std::vector<double>& values() const { return m_values; }
  void setValues(const std::vector<double>& values) { m_values = values; }
  /// @}

  /// The attribute that stores it: true "LCS", false "MCS".
  /// @{
  bool isLocal() const { return m_isLocal; }
  void setIsLocal(bool isLocal) { m_isLocal = isLocal; }
  /// @}

  /// The attribute's text: "CS, 0, 0, 0, 1, ...", or nothing without values.
  QString& toText(QString& out, bool debugForm) const override;

  using ztCAD_INode::readXml;
  using ztCAD_INode::writeXml;
  void write(ztcad::ElementSink& element) const override;
  /// Reads "LCS" or "MCS", as `isLocal` selects, and appends its values to the present ones. False, with
  /// nothing changed, unless the text is "CS" and exactly twelve parts; a part that is no number counts as 0.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  const QString& attributeName() const;

  std::vector<double> m_values;
  bool m_isLocal = true;
};
