#pragma once

#include <cstdint>
#include <vector>

#include "../core/node.h"

/// @file
/// Mass-inertia records.

/// A mass-inertia record: ten reals in the order of the file. The format does not say what they mean; by
/// custom the mass, the three coordinates of its centre and the six terms of the inertia tensor, in the units
/// of the model.
///
/// One attribute, "MIP", on the element that carries it.
class ZTCAD_API ztCAD_MIP : public ztCAD_ISerialize, public ztCAD_INode {
 public:
  /// How many values a record has in a file.
  static constexpr int valueCount = 10;

  /// Not valid, no values.
  ztCAD_MIP() = default;
  /// Valid, with these values, whatever their count.
  explicit ztCAD_MIP(const std::vector<double>& values) : m_isValid(true), m_values(values) {}

  /// Whether values were set; they may be fewer than ten.
  bool isValid() const { return m_isValid; }
  /// The values in the order of the file; empty until they are set.
  const std::vector<double>& values() const { return m_values; }
  /// Makes the record valid; the two integers stay.
  void setValues(const std::vector<double>& values) {
    m_isValid = true;
    m_values = values;
  }
  /// Whether the record can be written: valid and at least ten values. Others are refused wherever one is
  /// set.
  bool isComplete() const { return m_isValid && m_values.size() >= valueCount; }

  /// Two integers that travel with copies of the record and are never written. Hosts may use them as they
  /// like.
  /// @{
  std::int32_t firstInteger() const { return m_firstInteger; }
  void setFirstInteger(std::int32_t value) { m_firstInteger = value; }
  std::int32_t secondInteger() const { return m_secondInteger; }
  void setSecondInteger(std::int32_t value) { m_secondInteger = value; }
  /// @}

  /// "MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10"; nothing for a record that is not complete.
  QString& toText(QString& out, bool debugForm) const override;

  /// Takes "MIP" and exactly ten values, which are appended to those of a valid record. False for anything
  /// else; a value that is no number is stored as 0 and makes the result false too.
  bool fromText(const QString& text);

  /// Sets the attribute when the record is complete.
  void write(ztcad::ElementSink& element) const override;
  /// Replaces the values by those of the attribute; false, and nothing changed, when it is absent or does not
  /// parse.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  std::int32_t m_firstInteger = 0;
  std::int32_t m_secondInteger = 1;
  bool m_isValid = false;
  std::vector<double> m_values;
};
