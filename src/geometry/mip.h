#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "../core/node.h"

/// @file
/// Mass-inertia records.

/// A mass-inertia record: ten reals in the order of the file. The format does not define their meaning; by
/// convention they are the mass, the three coordinates of its centre and the six terms of the inertia tensor,
/// in the units of the model.
///
/// Stored as one attribute, "MIP", of the element that has the record.
class ZTCAD_API ztCAD_MIP : public ztCAD_ISerialize, public ztCAD_INode {
 public:
  /// Number of values of a record in a file.
  static constexpr int valueCount = 10;

  /// Not valid, no values.
  ztCAD_MIP() = default;
  /// Valid, with these values, whatever their count.
  explicit ztCAD_MIP(const std::vector<double>& values) : m_isValid(true), m_values(values) {}

  /// Whether values were set; they may be fewer than ten.
  bool isValid() const { return m_isValid; }
  /// The values in the order of the file; empty until they are set. Setting them makes the record valid and
  /// keeps the two integers.
  /// @{
  const std::vector<double>& values() const { return m_values; }
  void setValues(const std::vector<double>& values) {
    m_isValid = true;
    m_values = values;
  }
  /// @}
  /// Whether the record can be written: valid, with at least ten values. No element takes an incomplete
  /// record.
  bool isComplete() const { return m_isValid && m_values.size() >= valueCount; }

  /// Two integers for the host's own use, initially 0 and 1. They are copied with the record and never
  /// written.
  /// @{
  std::int32_t firstInteger() const { return m_firstInteger; }
  void setFirstInteger(std::int32_t value) { m_firstInteger = value; }
  std::int32_t secondInteger() const { return m_secondInteger; }
  void setSecondInteger(std::int32_t value) { m_secondInteger = value; }
  /// @}

  /// "MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10", with six significant digits each; nothing for an incomplete
  /// record.
  QString& toText(QString& out, bool debugForm) const override;

  /// Reads "MIP" and exactly ten values and appends them to those of a valid record. Any other text changes
  /// nothing and gives false. A value that is no number is stored as 0 and makes the result false too.
  [[nodiscard]] bool fromText(const QString& text);

  /// Sets the attribute if the record is complete.
  void write(ztcad::ElementSink& element) const override;
  /// Replaces the values by those of the attribute. False, with nothing changed, if it is absent or does not
  /// parse.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  std::int32_t m_firstInteger = 0;
  std::int32_t m_secondInteger = 1;
  bool m_isValid = false;
  std::vector<double> m_values;
};

/// The mass-inertia record of an element that may have one: solids, details and mass-inertia elements share
/// this part. The record is complete or absent.
class ZTCAD_API ztCAD_OptionalMIP {
 public:
  /// Whether there is a record.
  bool isSet() const { return m_record.isValid(); }
  /// A copy of the record; std::nullopt if there is none. std::nullopt clears it; an incomplete record is
  /// refused: nothing changes.
  /// @{
  std::optional<ztCAD_MIP> record() const { return isSet() ? std::optional(m_record) : std::nullopt; }
  void setRecord(const std::optional<ztCAD_MIP>& record);
  /// @}
  /// The record itself, which lives as long as this object; null if there is none.
  const ztCAD_MIP* recordIfSet() const { return isSet() ? &m_record : nullptr; }

  /// Appends the record's text to `out` and returns `out`; appends nothing if there is no record.
  QString& toText(QString& out, bool debugForm) const;
  /// Sets the attribute "MIP" if there is a record.
  void write(ztcad::ElementSink& element) const;
  /// Takes the record from the attribute "MIP". False, with nothing changed, if it is absent or does not
  /// parse.
  bool read(const ztcad::ElementView& element);

 private:
  ztCAD_MIP m_record;  // complete, or not valid
};
