#pragma once

#include <optional>
#include <string>

#include "../core/container.h"
#include "../property/base.h"
#include "mip.h"

/// @file
/// Mass-inertia elements.

/// A mass-inertia record as an element of its own: what instances and templates have in common.
///
/// An element without a record is not written at all.
class ZTCAD_API ztCAD_commonElementMIP : public ztCAD_Base,
                                         public ztCAD_baseElement,
                                         public ztCAD_INode,
                                         public ztCAD_IBaseChecker,
                                         public ztCAD_StateCorrect,
                                         public ztCAD_INameLCS_Selector {
 public:
  /// Whether there is a record.
  bool hasMIP() const { return m_hasMip; }
  /// A copy of the record; nothing where there is none.
  std::optional<ztCAD_MIP> record() const { return m_hasMip ? std::optional(m_record) : std::nullopt; }
  /// Nothing takes the record away. One that is not complete could not be written and is refused: nothing changes.
  void setRecord(const std::optional<ztCAD_MIP>& record);

  /// "method==MIP prop=", the property block, the record. Always the form for people.
  QString& toText(QString& out, bool debugForm) const;
  void write(ztcad::ElementSink& parent) const override;
  bool read(const ztcad::ElementView& element, bool& fault) override { return readAndCheck(element, fault); }
  /// False when "method" is not "MIP", when the record is absent or does not parse, or when the property
  /// block does not read. Whatever could be read is kept.
  bool readAndCheck(const ztcad::ElementView& element, bool& fault) override;

  /// The outcome of the last read; of an element that was built, whether it has a record.
  bool passesCheck() const { return wasRead() ? readOk() : m_hasMip; }

 protected:
  /// No name, no record, the method "MIP".
  ztCAD_commonElementMIP();
  /// With a copy of `record`; without one where that is not complete.
  /// @param name UTF-8, else windows-1251
  ztCAD_commonElementMIP(const std::string& name, const ztCAD_MIP& record);

 private:
  bool m_hasMip = false;
  ztCAD_MIP m_record;
};

/// A mass-inertia element of a document or of a structure.
class ZTCAD_API ztCAD_ElementMIP : public ztCAD_commonElementMIP,
                                   public ztCAD_cmnSelector2<ztCAD_KindElementMIP> {
 public:
  /// No name, no record.
  ztCAD_ElementMIP() = default;
  /// With a copy of `record`; without one where that is not complete.
  /// @param name UTF-8, else windows-1251
  ztCAD_ElementMIP(const std::string& name, const ztCAD_MIP& record) : ztCAD_commonElementMIP(name, record) {}

  QString lcsWord() const override;
  QString elementName() const override;
};

/// A mass-inertia element kept as a template.
class ZTCAD_API ztCAD_TmplElementMIP : public ztCAD_commonElementMIP,
                                       public ztCAD_cmnSelector2<ztCAD_KindTmplElementMIP> {
 public:
  /// No name, no record.
  ztCAD_TmplElementMIP() = default;
  /// With a copy of `record`; without one where that is not complete.
  /// @param name UTF-8, else windows-1251
  ztCAD_TmplElementMIP(const std::string& name, const ztCAD_MIP& record)
      : ztCAD_commonElementMIP(name, record) {}

  QString lcsWord() const override;
  QString elementName() const override;
};
