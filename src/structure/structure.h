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

/// What a structure holds by value, one container per kind, in the order in which names are made unique.
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

/// A named, placed group of elements and of other structures. What structures and template structures have in
/// common.
///
/// Elements are held by value. Nested structures are held by pointer and never copied on adding: several
/// structures may hold the same one, and a copied structure holds the same nested structures as its source
/// (`clone` copies them too). Who made a structure destroys it; when that happens it disappears from every
/// structure that holds it, so that none is left with a pointer to nothing.
///
/// A structure always has a coordinate system; one without values is written as an empty attribute.
class ZTCAD_API ztCAD_commonStructure : public ztCAD_Base,
                                        public ztCAD_ISerialize,
                                        public ztCAD_INode,
                                        public ztCAD_StateCorrect {
 public:
  ~ztCAD_commonStructure() override;

  /// Makes the names in this structure unique, then, each level for itself, those in the nested ones. Always
  /// true.
  virtual bool unifyNames();
  /// A new empty structure of the same class, null in this one. It belongs to the list of structures made by
  /// reading, which ends with `ClearGMDDoc`.
  virtual ztCAD_commonStructure* createEmpty() const;
  /// A new structure with copies of everything, nested structures included. Belongs to the same list.
  virtual ztCAD_commonStructure* clone() const;
  /// "structure" or "template_structure".
  virtual QString elementName() const = 0;
  /// "LCS" for a structure, "MCS" for a template structure.
  virtual QString lcsWord() const = 0;
  /// Appends element name, coordinate-system word and coordinate system: the beginning of the text for
  /// people. Throws `std::logic_error` when the coordinate system was taken away.
  virtual QString& textHeader(QString& out) const;

  /// What the structure holds by value, to look at and to change. The reference stays good as long as the structure.
  /// @{
  ztCAD_StructureContent& content() { return m_content; }
  const ztCAD_StructureContent& content() const { return m_content; }
  /// @}

  /// The structures that this one nests, none of them null, in the order in which they were added.
  const ztCAD_Cont<ztCAD_commonStructure*>& structures() const { return m_nested; }

  /// Appends `structure` itself, not a copy. False means that it was added; true, and nothing changed, for
  /// the structure itself, for one that holds this one (the ring would never end), and where elements would
  /// lie deeper than a file may nest them.
  bool addStructure(ztCAD_commonStructure& structure);
  /// Releases the nested structure at this address, the first of its entries if there are several. The structure itself
  /// is not destroyed and keeps its owner.
  /// @param address only compared, so it may be that of an object that no longer exists
  /// @return whether the structure was held
  bool removeStructure(const void* address);
  /// Number of entries of this structure in other structures, two in one holder included.
  std::size_t holdingEntries() const;
  /// Whether an element of this many levels may be added without lying deeper than a file may nest it.
  bool hasRoomFor(int levels) const;

  /// "structure, LCS, CS, ... [ {point ...}{point ...} ];"
  QString& toText(QString& out, bool debugForm) const override;
  void write(ztcad::ElementSink& parent) const override;
  /// Replaces everything. False when a child does not read (it stays all the same), when a "solid" is of no
  /// known method (it is passed over), and when a nested "structure" has no name. Lines that are no
  /// polylines, mass-inertia elements that are no "MIP" and unknown tags are passed over.
  ///
  /// Nested structures are of the class of this one, and only the tag "structure" is known for them: what a
  /// template structure writes as a nested "template_structure" is not read back. Files are exchanged on that
  /// understanding.
  bool read(const ztcad::ElementView& element, bool& fault) override;

  /// Whether everything in here is sound: nested structures, points, lines, spheres, solids, mass-inertia
  /// elements and details. References are not looked at.
  bool passesCheck() const;

 protected:
  /// No name, an empty local coordinate system.
  ztCAD_commonStructure();
  /// Without content, in that coordinate system.
  /// @param nameIsFree output, always true
  ztCAD_commonStructure(const QString& name, const ztCAD_LCS& lcs, bool& nameIsFree);
  /// The properties and the content of `source` under a new name; how `source` was read is not taken over.
  ztCAD_commonStructure(const QString& name, const ztCAD_commonStructure& source, bool& nameIsFree);
  /// Copies the content and how `other` was read, and holds the same nested structures.
  ztCAD_commonStructure(const ztCAD_commonStructure& other);
  /// As the copy is made, in place of what was there. Leaves out a nested structure that `addStructure` would refuse.
  ztCAD_commonStructure& operator=(const ztCAD_commonStructure& other);

  /// Everything of `source`, with clones of its nested structures. Nothing happens for the structure itself.
  void copyWithClones(const ztCAD_commonStructure& source);

 private:
  using NestedList = ztCAD_Cont<ztCAD_commonStructure*>;

  bool readChild(const ztcad::ElementView& child);
  bool readNested(const ztcad::ElementView& child);
  using KnownLevels = std::unordered_map<const ztCAD_commonStructure*, int>;
  /// Levels of elements from this structure down to the deepest; visits each structure once.
  int levelsBelow(KnownLevels& known) const;
  /// Levels of elements from the root of a document down to this structure, on the longest way.
  int levelsAbove(KnownLevels& known) const;
  void hold(ztCAD_commonStructure& structure);
  void holdAllOf(const ztCAD_commonStructure& other);
  void releaseNested();
  void forgetEntry(ztCAD_commonStructure& holder);
  void leaveHolders();

  ztCAD_StructureContent m_content;
  NestedList m_nested;
  // Links in both directions, so that destroying either end costs no more than the number of its own links.
  std::unordered_multimap<ztCAD_commonStructure*, NestedList::iterator>
      m_entries;                                                      // of m_nested, by structure
  std::unordered_map<ztCAD_commonStructure*, std::size_t> m_holders;  // and how many entries each has
};

/// A placed group of elements.
class ZTCAD_API ztCAD_Structure : public ztCAD_commonStructure,
                                  public ztCAD_cmnSelector2<ztCAD_KindStructure> {
 public:
  /// No name, no content, an empty local coordinate system.
  ztCAD_Structure() = default;
  /// Without content, in that coordinate system.
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
  /// source, not cloned: a change inside one of them shows in both.
  /// @param nameIsFree output, always true
  ztCAD_TmplStructure(const QString& name, const ztCAD_commonStructure& source, bool& nameIsFree);

  ztCAD_commonStructure* createEmpty() const override;
  ztCAD_commonStructure* clone() const override;
  QString elementName() const override;
  QString lcsWord() const override;
};
