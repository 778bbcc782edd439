#pragma once

#include <ztCAD/inspect.h>
#include <deque>
#include <string>
#include <vector>

#include "scene.h"

namespace ztcad::inspect {

using MassRow = ztCADInspect_MassRow;

/// Mass properties of everything that a document holds or places, each computed once.
class MassTable {
 public:
  explicit MassTable(Scene& scene);

  const std::vector<MassRow>& rows() const { return m_rows; }
  const MassRow& total() const { return m_total; }
  /// The row of a node of the opened document; null: it can have no mass.
  const MassRow* rowOf(NodeIndex node) const;

 private:
  MassRow* entry(Located at);
  void makeRows();
  void fill(Located at);
  void fillTotal();
  void fillGeometry(MassRow& row, Located at);
  void fillReference(MassRow& row, Located at);
  void fillHolder(MassRow& row, const std::vector<Located>& children);
  static void combine(MassRow& row);
  const char* kept(const std::string& text);

  Scene& m_scene;
  std::vector<MassRow> m_rows;                     // of the document
  std::deque<MassRow> m_others;                    // of other files
  std::vector<std::vector<std::int64_t>> m_slots;  // by file and node: index of the row; -1
  std::deque<std::string> m_texts;
  MassRow m_total = {};
};

/// Whether elements of a kind can have mass, or hold what has.
bool canHaveMass(int kind);

}  // namespace ztcad::inspect

/// What the C interface knows as a table.
struct ztCADInspect_MassTable {
  ztcad::inspect::MassTable table;
};
