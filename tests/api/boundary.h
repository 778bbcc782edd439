#pragma once

#include <vector>

// One row per exported function: its results for null and invalid arguments.

namespace boundary {

struct Row {
  const char* name;  ///< name of the exported function
  void (*call)();
};

/// The null pointer of each type.
template <typename T>
constexpr T* null = nullptr;

std::vector<Row> elementRows();
std::vector<Row> elementArrayRows();
std::vector<Row> contentRows();
std::vector<Row> fieldRows();
std::vector<Row> countedRows();
std::vector<Row> reviewRows();
std::vector<Row> flatRows();

}  // namespace boundary
