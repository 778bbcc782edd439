#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "../core/node.h"

/// @file
/// Facets, and lists of them.

/// A triangle, as three indices into a vertex list. Indices are not compared with the number of vertices
/// anywhere.
class ZTCAD_API ztCAD_Facet : public ztCAD_ISerialize {
 public:
  /// Three times index 0.
  ztCAD_Facet() = default;
  /// These three corners.
  ztCAD_Facet(std::uint32_t i1, std::uint32_t i2, std::uint32_t i3) : m_i1(i1), m_i2(i2), m_i3(i3) {}

  /// Index of a corner in the vertex list, from 0.
  /// @{
  std::uint32_t I1() const { return m_i1; }
  std::uint32_t I2() const { return m_i2; }
  std::uint32_t I3() const { return m_i3; }
  /// @}

  /// Replaces all three.
  void set(std::uint32_t i1, std::uint32_t i2, std::uint32_t i3) { *this = ztCAD_Facet(i1, i2, i3); }

  /// Storage form "0, 1, 2;", for people "facet(I1=0, I2=1, I3=2)".
  QString& toText(QString& out, bool debugForm) const override;

 private:
  std::uint32_t m_i1 = 0;
  std::uint32_t m_i2 = 0;
  std::uint32_t m_i3 = 0;
};

/// A list of facets, stored flat: three indices of the first, three of the second, and so on.
class ZTCAD_API ztCAD_Faces : public ztCAD_ISerialize {
 public:
  /// Empty.
  ztCAD_Faces() = default;

  /// 3 * n indices, the first three those of the first facet.
  const std::vector<std::uint32_t>& indices() const { return m_indices; }
  /// Takes the indices as they are; the texts leave out a last one or two that make no facet.
  void setIndices(const std::vector<std::uint32_t>& indices) { m_indices = indices; }

  /// Appends one facet.
  void add(const ztCAD_Facet& facet);
  /// Appends `count` facets of a flat array of `count` * 3 indices, which may be this list's own. Without memory the list
  /// stays as it was.
  void add(const std::uint32_t* ijk, std::size_t count);
  /// Empties the list.
  void clear() { m_indices.clear(); }

  /// As for vertices: "0, 1, 2;" lines, for people "facet(I1=0, I2=1, I3=2)" lines between "faces(" and ")".
  QString& toText(QString& out, bool debugForm) const override;

  /// Replaces the list by the facets in `text`, by the same rules as for vertices. Sets the default locale to
  /// C.
  bool fromText(const QString& text);

  /// The element "faces" below the element at which the sink stands.
  void writeElement(ztcad::ElementSink& parent) const;
  /// `fromText` of an element's text.
  bool readElement(const ztcad::ElementView& element);

 private:
  std::vector<std::uint32_t> m_indices;
};
