#pragma once

#include <optional>
#include <string>

#include "../core/container.h"
#include "../property/base.h"
#include "mip.h"

/// @file
/// Mass-inertia elements.

/// A mass-inertia record as a separate element; the common base of instances and templates.
///
/// An element without a record is not written.
class ZTCAD_API ztCAD_commonElementMIP : public ztCAD_Base,
                                         public ztCAD_baseElement,
                                         public ztCAD_INode,
                                         public ztCAD_IBaseChecker,
                                         public ztCAD_StateCorrect,
                                         public ztCAD_INameLCS_Selector {
 public:
  /// Whether there is a record.
  bool hasMIP() const { return m_record.isSet(); }
  /// A copy of the record; std::nullopt if there is none. std::nullopt clears the record; an incomplete one
  /// is refused: nothing changes.
  /// @{
  std::optional<ztCAD_MIP> record() const { return m_record.record(); }
  void setRecord(const std::optional<ztCAD_MIP>& record) { m_record.setRecord(record); }
  /// @}
  /// The record itself, which lives as long as the element; null if there is none.
  const ztCAD_MIP* mipIfSet() const { return m_record.recordIfSet(); }

  /// Appends "method==MIP prop=", the property block and the record to `out` and returns `out`. There is no
  /// storage form.
  QString& toText(QString& out, bool debugForm) const;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False if "method" is not "MIP", if the record is absent or does not parse, or if the property block
  /// cannot be read. All parts that could be read are kept.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// For an element that was read, whether the last read succeeded; else whether it has a record.
  bool passesCheck() const { return wasRead() ? readOk() : hasMIP(); }

 protected:
  /// No name, no record, the method "MIP".
  ztCAD_commonElementMIP();
  /// With a copy of `record`, or without a record if that is incomplete.
  /// @param name UTF-8, else windows-1251
  ztCAD_commonElementMIP(const std::string& name, const ztCAD_MIP& record);

 private:
  ztCAD_OptionalMIP m_record;
};

/// A mass-inertia element of a document or structure.
class ZTCAD_API ztCAD_ElementMIP : public ztCAD_commonElementMIP,
                                   public ztCAD_cmnSelector2<ztCAD_KindElementMIP> {
 public:
  /// No name, no record.
  ztCAD_ElementMIP() = default;
  /// With a copy of `record`, or without a record if that is incomplete.
  /// @param name UTF-8, else windows-1251
  ztCAD_ElementMIP(const std::string& name, const ztCAD_MIP& record) : ztCAD_commonElementMIP(name, record) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A mass-inertia element stored as a template.
class ZTCAD_API ztCAD_TmplElementMIP : public ztCAD_commonElementMIP,
                                       public ztCAD_cmnSelector2<ztCAD_KindTmplElementMIP> {
 public:
  /// No name, no record.
  ztCAD_TmplElementMIP() = default;
  /// With a copy of `record`, or without a record if that is incomplete.
  /// @param name UTF-8, else windows-1251
  ztCAD_TmplElementMIP(const std::string& name, const ztCAD_MIP& record)
      : ztCAD_commonElementMIP(name, record) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
