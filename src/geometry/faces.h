#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "../core/node.h"

/// @file
/// Facets and lists of facets.

/// A triangle given by three indices into a vertex list. Indices are never compared with the number of
/// vertices.
class ZTCAD_API ztCAD_Facet : public ztCAD_ISerialize {
 public:
  /// All indices 0.
  ztCAD_Facet() = default;
  /// With these indices.
  ztCAD_Facet(std::uint32_t i1, std::uint32_t i2, std::uint32_t i3) : m_i1(i1), m_i2(i2), m_i3(i3) {}

  /// Indices of the corners in the vertex list, from 0.
  /// @{
  std::uint32_t I1() const { return m_i1; }
  std::uint32_t I2() const { return m_i2; }
  std::uint32_t I3() const { return m_i3; }
  /// @}

  /// Sets all three indices.
  void set(std::uint32_t i1, std::uint32_t i2, std::uint32_t i3) { *this = ztCAD_Facet(i1, i2, i3); }

  /// Storage form "0, 1, 2;", diagnostic form "facet(I1=0, I2=1, I3=2)".
  QString& toText(QString& out, bool debugForm) const override;

 private:
  std::uint32_t m_i1 = 0;
  std::uint32_t m_i2 = 0;
  std::uint32_t m_i3 = 0;
};

/// A list of facets, stored flat: the three indices of the first, then those of the second, and so on.
class ZTCAD_API ztCAD_Faces : public ztCAD_ISerialize {
 public:
  /// Empty.
  ztCAD_Faces() = default;

  /// 3 * n indices, the first three those of the first facet. Any number can be set; texts omit one or two
  /// indices at the end that form no facet.
  /// @{
  const std::vector<std::uint32_t>& indices() const { return m_indices; }
  void setIndices(const std::vector<std::uint32_t>& indices) { m_indices = indices; }
  /// @}

  /// Appends one facet.
  void add(const ztCAD_Facet& facet);
  /// Appends `count` facets from a flat array of `count` * 3 indices, which may be part of this list. If
  /// memory runs out (`std::bad_alloc`), the list is unchanged.
  void add(const std::uint32_t* ijk, std::size_t count);
  /// Empties the list.
  void clear() { m_indices.clear(); }

  /// Storage form: a line feed, then "0, 1, 2;" and a line feed for each facet. Diagnostic form: the same
  /// with "facet(I1=0, I2=1, I3=2)", between a line feed with "faces(" and ")".
  QString& toText(QString& out, bool debugForm) const override;

  /// Replaces the list by the facets in `text`, by the rules of `ztCAD_Vertices::fromText`. Sets the
  /// process-wide default locale (QLocale) to C.
  [[nodiscard]] bool fromText(const QString& text);

  /// Writes the element "faces" as a child of the sink's current element.
  void writeElement(ztcad::ElementSink& parent) const;
  /// `fromText` of an element's text.
  [[nodiscard]] bool readElement(const ztcad::ElementView& element);

 private:
  std::vector<std::uint32_t> m_indices;
};
