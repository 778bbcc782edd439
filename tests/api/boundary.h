#pragma once

#include <vector>

// Every exported function with null objects and nonsense, row by row.

namespace boundary {

struct Row {
  const char* name;  ///< of the exported function
  void (*call)();
};

/// Nothing at all of each type.
template <typename T>
constexpr T* null = nullptr;

std::vector<Row> elementRows();
std::vector<Row> contentRows();
std::vector<Row> fieldRows();
std::vector<Row> countedRows();
std::vector<Row> flatRows();

}  // namespace boundary
