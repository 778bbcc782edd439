#pragma once

#include <vector>

#include "../core/node.h"

/// @file
/// Coordinate systems.

/// A coordinate system: twelve reals, kept as an ordered list whose meaning the library does not interpret
/// (by custom the origin, then the three axes), or no values at all.
///
/// One attribute on the element that carries it, "LCS" for a local system and "MCS" for the model system; its
/// text is "CS" and the values, six significant digits each, or empty.
class ZTCAD_API ztCAD_LCS : public ztCAD_ISerialize, private ztCAD_INode {
 public:
  /// How many values are read; systems of another count can be made and written.
  static constexpr int valueCount = 12;
  /// Two values are equal when they differ by less than this.
  static constexpr double tolerance = 1e-08;

  /// No values, local.
  ztCAD_LCS() = default;
  /// These values as they are, whatever their count.
  ztCAD_LCS(bool isLocal, const std::vector<double>& values) : m_values(values), m_isLocal(isLocal) {}

  /// The values in their order; empty for a system without.
  /// @{
  const std::vector<double>& values() const { return m_values; }
  void setValues(const std::vector<double>& values) { m_values = values; }
  /// @}

  /// Which attribute carries it: true "LCS", false "MCS".
  /// @{
  bool isLocal() const { return m_isLocal; }
  void setIsLocal(bool isLocal) { m_isLocal = isLocal; }
  /// @}

  /// The attribute's text: "CS, 0, 0, 0, 1, ..." or nothing.
  QString& toText(QString& out, bool debugForm) const override;

  using ztCAD_INode::readXml;
  using ztCAD_INode::writeXml;
  void write(ztcad::ElementSink& element) const override;
  /// Looks for "LCS" or "MCS", as `isLocal` says, and appends its values. False, and nothing changed, unless
  /// it is "CS" and exactly twelve parts; a part that is no number counts as 0.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  const QString& attributeName() const;

  std::vector<double> m_values;
  bool m_isLocal = true;
};

namespace ztcad {
/// Whether two systems have equally many values that pairwise differ by less than the tolerance. Local and
/// model systems are not told apart.
bool isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b);
}  // namespace ztcad
