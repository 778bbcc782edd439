#pragma once

#include <unordered_map>

#include "../core/container.h"
#include "../geometry/line.h"
#include "../geometry/mip_element.h"
#include "../geometry/point.h"
#include "../geometry/sphere.h"
#include "../geometry/triangle.h"
#include "../property/base.h"
#include "detail.h"
#include "reference.h"

/// @file
/// Structures: groups of elements, which nest.

namespace ztcad {
class NameRuns;
class StructurePass;
}  // namespace ztcad

/// What a structure holds by value: one container for each kind.
struct ZTCAD_API ztCAD_StructureContent {
  ztCAD_Cont<ztCAD_StructureRef> structureReferences;  ///< placed template structures
  ztCAD_Cont<ztCAD_Point> points;                      ///< named positions
  ztCAD_Cont<ztCAD_Line> lines;                        ///< polylines
  ztCAD_Cont<ztCAD_Sphere> spheres;                    ///< solids given by centre and radius
  ztCAD_Cont<ztCAD_Triangle> triangles;                ///< solids given by vertices and facets
  ztCAD_Cont<ztCAD_ElementMIP> mipElements;            ///< mass-inertia records by themselves
  ztCAD_Cont<ztCAD_Detail> details;                    ///< rigid parts
  ztCAD_Cont<ztCAD_DetailRef> detailReferences;        ///< placed template details
  ztCAD_Cont<ztCAD_PointRef> pointReferences;          ///< placed template points
  ztCAD_Cont<ztCAD_LineRef> lineReferences;            ///< placed template lines
  ztCAD_Cont<ztCAD_ElementMipRef> mipReferences;       ///< placed template mass-inertia elements
  ztCAD_Cont<ztCAD_TriangleRef> triangleReferences;    ///< placed template solids
};

/// A named, placed group of elements and of other structures. The common base of structures and template
/// structures.
///
/// Elements are held by value. Nested structures are held by pointer and not copied when they are added:
/// several structures may hold the same one, and a copied structure holds the same nested structures as its
/// source (`clone` copies them too). A structure is destroyed by its owner; it then disappears from every
/// structure that holds it, so no dangling pointer remains.
///
/// A structure always has a coordinate system, in the frame of its holder; its content is in that system. A
/// system without values is written as an empty attribute.
class ZTCAD_API ztCAD_commonStructure : public ztCAD_Base,
                                        public ztCAD_ISerialize,
                                        public ztCAD_INode,
                                        public ztCAD_StateCorrect {
 public:
  ~ztCAD_commonStructure() override;

  /// Makes the names in this structure unique, then those in each nested structure, each level separately.
  /// Always true.
  virtual bool unifyNames();
  /// A new empty structure of the same class; null in this class. While a document is being loaded it belongs
  /// to that load, otherwise to the list that all documents share, which `ClearGMDDoc` empties.
  virtual ztCAD_commonStructure* createEmpty() const;
  /// A new structure with copies of everything, nested structures included; null in this class. It has the
  /// owner that `createEmpty` gives it.
  virtual ztCAD_commonStructure* clone() const;
  /// "structure" or "template_structure".
  virtual QString elementName() const = 0;
  /// "LCS" for a structure, "MCS" for a template structure.
  virtual QString lcsWord() const = 0;
  /// Appends element name, coordinate-system word and coordinate system: the beginning of `toText`. Throws
  /// `std::logic_error` if the coordinate system was cleared.
  virtual QString& textHeader(QString& out) const;

  /// What the structure holds by value. The reference is valid as long as the structure.
  /// @{
  ztCAD_StructureContent& content() { return m_content; }
  const ztCAD_StructureContent& content() const { return m_content; }
  /// @}

  /// The nested structures in the order of addition; none is null.
  const ztCAD_Cont<ztCAD_commonStructure*>& structures() const { return m_nested; }

  /// Appends `structure` itself, not a copy.
  /// @return false: added. True: nothing changed, because `structure` is this structure or holds it at any
  ///         depth (that would close a ring), or because elements would be nested deeper than a file may nest
  ///         them
  bool addStructure(ztCAD_commonStructure& structure);
  /// Releases the nested structure at this address: its first entry, if there are several. The structure is
  /// not destroyed and keeps its owner.
  /// @param address only compared: the object may no longer exist
  /// @return whether the structure was held
  bool removeStructure(const void* address);
  /// Whether another structure holds this one.
  bool isNested() const { return !m_holders.empty(); }
  /// Whether this structure is held more than once, by one other structure or by several.
  bool isShared() const { return m_holders.size() > 1 || (isNested() && m_holders.begin()->second > 1); }
  /// Whether an element of this many levels can be added without being nested deeper than a file may nest it.
  bool hasRoomFor(int levels) const;

  /// "structure, LCS, CS, ... [ {point ...}{point ...} ];"
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  /// Replaces the properties and the content. False when a child fails to read (it is kept), when a "solid"
  /// has an unknown method (it is skipped), and when a nested "structure" has no name. Lines of another
  /// method than "polyline", mass-inertia elements of another method than "MIP" and unknown tags are ignored.
  ///
  /// Nested structures are read by the tag "structure" only and become objects of the class of this one. A
  /// nested template structure is written as "template_structure" and therefore not read back: that is a rule
  /// of the format.
  bool read(const ztcad::ElementView& element, bool& fault) override;

  /// Whether all nested structures, points, lines, spheres, solids, mass-inertia elements and details are
  /// sound. References are not checked.
  bool passesCheck() const;

 protected:
  /// No name, an empty local coordinate system.
  ztCAD_commonStructure();
  /// Without content.
  /// @param lcs        the structure's coordinate system
  /// @param nameIsFree output, always true
  ztCAD_commonStructure(const QString& name, const ztCAD_LCS& lcs, bool& nameIsFree);
  /// The properties and the content of `source` under a new name, but not the outcome of its last read.
  /// Nested structures are shared with the source.
  ztCAD_commonStructure(const QString& name, const ztCAD_commonStructure& source, bool& nameIsFree);
  /// Copies properties, content and the outcome of the last read, and holds the same nested structures.
  ztCAD_commonStructure(const ztCAD_commonStructure& other);
  /// Replaces everything by what the copy constructor would copy, except nested structures that
  /// `addStructure` refuses.
  ztCAD_commonStructure& operator=(const ztCAD_commonStructure& other);

  /// Replaces properties and content by copies of those of `source`, with clones of its nested structures.
  /// Nothing happens if `source` is this structure.
  void copyWithClones(const ztCAD_commonStructure& source);

 private:
  using NestedList = ztCAD_Cont<ztCAD_commonStructure*>;

  bool readChild(const ztcad::ElementView& child, ztcad::NameRuns& names);
  bool readNested(const ztcad::ElementView& child, ztcad::NameRuns& names);
  using KnownLevels = std::unordered_map<const ztCAD_commonStructure*, int>;
  /// Levels of elements from this structure down to the deepest one. Visits each structure once.
  int levelsBelow(KnownLevels& known) const;
  /// Levels of elements from the root of a document down to this structure, on the longest path.
  int levelsAbove(KnownLevels& known) const;
  void hold(ztCAD_commonStructure& structure);
  void holdAllOf(const ztCAD_commonStructure& other);
  void releaseNested();
  void forgetEntry(ztCAD_commonStructure& holder);
  void leaveHolders();

  friend class ztcad::StructurePass;

  bool m_namesWereDifferent = false;  // those of the children, in the last read; false: or that is not known
  ztCAD_StructureContent m_content;
  NestedList m_nested;
  // Links in both directions, so destroying either end takes time in proportion to the number of its own
  // links.
  std::unordered_multimap<ztCAD_commonStructure*, NestedList::iterator>
      m_entries;                                                      // entries of m_nested, by structure
  std::unordered_map<ztCAD_commonStructure*, std::size_t> m_holders;  // entries of this structure in each
};

/// A placed group of elements.
class ZTCAD_API ztCAD_Structure : public ztCAD_commonStructure,
                                  public ztCAD_cmnSelector2<ztCAD_KindStructure> {
 public:
  /// No name, no content, an empty local coordinate system.
  ztCAD_Structure() = default;
  /// Without content.
  /// @param lcs        the structure's coordinate system
  /// @param nameIsFree output, always true
  ztCAD_Structure(const QString& name, const ztCAD_LCS& lcs, bool& nameIsFree)
      : ztCAD_commonStructure(name, lcs, nameIsFree) {}

  ztCAD_commonStructure* createEmpty() const override;
  ztCAD_commonStructure* clone() const override;
  QString elementName() const override;
  QString lcsWord() const override;
};

/// A group of elements kept as a template.
class ZTCAD_API ztCAD_TmplStructure : public ztCAD_commonStructure,
                                      public ztCAD_cmnSelector2<ztCAD_KindTmplStructure> {
 public:
  /// No name, no content, an empty local coordinate system.
  ztCAD_TmplStructure() = default;
  /// The properties and the content of `source` under a new name. Nested structures are shared with the
  /// source, not cloned: a change in one of them shows in both.
  /// @param nameIsFree output, always true
  ztCAD_TmplStructure(const QString& name, const ztCAD_commonStructure& source, bool& nameIsFree);

  ztCAD_commonStructure* createEmpty() const override;
  ztCAD_commonStructure* clone() const override;
  QString elementName() const override;
  QString lcsWord() const override;
};
