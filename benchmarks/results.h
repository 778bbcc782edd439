#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "measuring.h"

namespace benchmarks {

enum class Memory { NotAsked, OfLoad, OfSave };

/// One measured case: the library beside the stock way and the reference, where there are such.
struct Row {
  std::string what;
  std::size_t size = 0;  // vertices or points
  double bytes = 0;      // of the file; 0 where there is none
  Memory memory = Memory::NotAsked;
  Figures ours;
  std::optional<Figures> stock;
  std::optional<Figures> reference;
};

/// The ways to do one thing; an empty function is not run.
struct Ways {
  std::function<Figures()> ours;
  std::function<Figures()> stock;
  std::function<Figures()> reference;
};

/// Runs each way several times, in turn, so that a busy moment of the machine does not fall on one of them
/// alone, and keeps the quickest run of each. A way that takes long is not repeated. Throws when a run did not
/// give what it had to give.
Row measure(const std::string& what, const Ways& ways);

class Results {
 public:
  void add(const Row& row) { m_rows.push_back(row); }
  const std::vector<Row>& rows() const { return m_rows; }
  /// The largest one of this name, or the one before it (`back` 1); null where there is none.
  const Row* largest(const std::string& what, std::size_t back = 0) const;

 private:
  std::vector<Row> m_rows;  // those of one name from small to large
};

}  // namespace benchmarks
