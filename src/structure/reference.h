#pragma once

#include <atomic>
#include <cstddef>
#include <memory>

#include "../geometry/line.h"
#include "../geometry/mip_element.h"
#include "../geometry/point.h"
#include "../geometry/triangle.h"
#include "../property/archetype.h"
#include "../property/base.h"
#include "detail.h"

class ZTCAD_API
    ztCAD_TmplStructure;  // exported here, or the instances of ztCAD_commonRef for it would not be

/// @file
/// References: placed templates.

/// A reference places a template without copying it. It has a name and properties of its own, a coordinate
/// system as its placement, and the name of the template. The library does not look the template up; programs
/// find it by that name.
///
/// Large documents have millions of references, so a reference holds the values in few bytes. The objects
/// that `lcs` and `archetype` return are made on the first call and hold the values from then on, in some 200
/// bytes more. These two functions, and setting a file or a placement of another number of values than
/// twelve, may throw `std::bad_alloc` and then change nothing.
///
/// By convention the placement is in the frame of the reference's holder, and the template's own system comes
/// inside it. It is always written under the name "MCS", also if a local system was given.
template <typename Template>
class ZTCAD_API ztCAD_commonRef : public ztCAD_Base, public ztCAD_INode, public ztCAD_ISerialize {
 public:
  // Each member has its own comment: Doxygen does not pass that of a group on to the instances of a template.
  /// The placement: where the template is put. `isLocal` is false. The C++ reference is valid as long as this
  /// object. Several threads may call it for one object at a time.
  const ztCAD_LCS& lcs() const;
  /// Sets the values of the placement; `isLocal` of `lcs` is ignored.
  void setLcs(const ztCAD_LCS& lcs);
  /// The values of the placement; valid until it is changed.
  const double* placementData() const;
  /// The number of these values.
  std::size_t placementSize() const;

  /// What is placed: name and file of the template. The C++ reference is valid as long as this object.
  /// Several threads may call it for one object at a time.
  const ztCAD_gArche& archetype() const;
  /// The same, to be changed.
  ztCAD_gArche& archetype();
  /// Copies name and file of a template.
  void setArchetype(const ztCAD_gArche& archetype);
  /// The name of the template.
  QString templateName() const;
  /// Sets the name of the template.
  void setTemplateName(const QString& name);
  /// The file that contains the template, empty for the same document.
  QString file() const;
  /// Sets the file that contains the template.
  void setFile(const QString& file);

  /// The tag of the reference's XML element, which also opens its text.
  virtual QString elementName() const = 0;

  /// "pointRef( MCS=(CS, ...), attr=..., arche(template=..., file=...)"
  QString& toText(QString& out, bool debugForm) const override;
  /// One element without children: placement, properties, and what is placed.
  void write(ztcad::ElementSink& parent) const override;
  /// Always true. Without a readable "MCS" the placement is unchanged. An "LCS" is read as a property, not as
  /// the placement.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 protected:
  /// No name, no template, a placement without values.
  ztCAD_commonRef();
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_commonRef(const QString& name, const ztCAD_LCS& lcs, const Template& source, bool& nameIsFree);
  /// Copies everything: placement, properties and what is placed.
  ztCAD_commonRef(const ztCAD_commonRef& other);
  /// Replaces everything by a copy.
  ztCAD_commonRef& operator=(const ztCAD_commonRef& other);
  ~ztCAD_commonRef() override;

 private:
  /// The values as objects. Once made, they replace the values of the reference.
  struct Objects {
    ztCAD_LCS lcs{false, {}};
    ztCAD_gArche archetype;
  };

  /// The objects; null if they are not made.
  Objects* madeObjects() const;
  /// The objects, which it makes if they are not there.
  Objects& objects() const;
  std::unique_ptr<Objects> newObjects() const;

  double m_values[ztCAD_LCS::valueCount] = {};
  bool m_hasValues = false;  // false: the placement has no values; the objects hold another number of them
  ztCAD_ShortText m_templateName;
  /// Owned; null: not made, the usual case in a large document. They hold the file, which is rare.
  mutable std::atomic<Objects*> m_objects{nullptr};
};

#if !defined(_MSC_VER) || !defined(ZTCAD_BUILDING_LIBRARY)  // Visual C++ does not export "extern" instances
extern template class ztCAD_commonRef<ztCAD_TmplPoint>;
extern template class ztCAD_commonRef<ztCAD_TmplLine>;
extern template class ztCAD_commonRef<ztCAD_TmplTriangle>;
extern template class ztCAD_commonRef<ztCAD_TmplElementMIP>;
extern template class ztCAD_commonRef<ztCAD_TmplDetail>;
extern template class ztCAD_commonRef<ztCAD_TmplStructure>;
#endif

/// A placed template point.
class ZTCAD_API ztCAD_PointRef : public ztCAD_commonRef<ztCAD_TmplPoint> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_PointRef() = default;
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_PointRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplPoint& source, bool& nameIsFree)
      : ztCAD_commonRef(name, lcs, source, nameIsFree) {}
  QString elementName() const override;
};

/// A placed template line.
class ZTCAD_API ztCAD_LineRef : public ztCAD_commonRef<ztCAD_TmplLine> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_LineRef() = default;
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_LineRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplLine& source, bool& nameIsFree)
      : ztCAD_commonRef(name, lcs, source, nameIsFree) {}
  QString elementName() const override;
};

/// A placed template solid; in a file it is a "solidRef".
class ZTCAD_API ztCAD_TriangleRef : public ztCAD_commonRef<ztCAD_TmplTriangle> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_TriangleRef() = default;
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_TriangleRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplTriangle& source,
                    bool& nameIsFree)
      : ztCAD_commonRef(name, lcs, source, nameIsFree) {}
  QString elementName() const override;
};

/// A placed template mass-inertia element.
class ZTCAD_API ztCAD_ElementMipRef : public ztCAD_commonRef<ztCAD_TmplElementMIP> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_ElementMipRef() = default;
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_ElementMipRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplElementMIP& source,
                      bool& nameIsFree)
      : ztCAD_commonRef(name, lcs, source, nameIsFree) {}
  QString elementName() const override;
};

/// A placed template detail. A new one has the default placement (no values): the constructor ignores `lcs`.
/// Use `setLcs` afterwards.
class ZTCAD_API ztCAD_DetailRef : public ztCAD_commonRef<ztCAD_TmplDetail> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_DetailRef() = default;
  /// Refers to `source` by its name.
  /// @param lcs        ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_DetailRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplDetail& source,
                  bool& nameIsFree);
  QString elementName() const override;
};

/// A placed template structure.
class ZTCAD_API ztCAD_StructureRef : public ztCAD_commonRef<ztCAD_TmplStructure> {
 public:
  /// No name, no template, a placement without values.
  ztCAD_StructureRef() = default;
  /// Places `source` by its name.
  /// @param lcs        the placement; its `isLocal` is ignored
  /// @param nameIsFree output, always true, also for the second of two references of one name
  ztCAD_StructureRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplStructure& source,
                     bool& nameIsFree)
      : ztCAD_commonRef(name, lcs, source, nameIsFree) {}
  QString elementName() const override;
};
