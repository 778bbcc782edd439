#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// One step on the way to an element: its kind and name in its holder.
struct ElementStep {
  std::string kind;
  std::string name;
};

/// The elements from the document down to one of them; empty: the document itself.
using ElementPath = std::vector<ElementStep>;

enum class Change {
  Added,    ///< the element is only in the second document
  Removed,  ///< the element is only in the first document
  Moved,    ///< elements of one kind are in another order in their holder
  Changed   ///< a field of the element has another value
};

/// Where two lists differ, with the values there; null: the list has no such entry.
struct DifferentPlace {
  std::int64_t index = 0;
  nlohmann::ordered_json a;
  nlohmann::ordered_json b;
};

/// One thing that differs between two documents.
// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON values throws nothing but failed assertions
struct Difference {
  Change change = Change::Changed;
  ElementPath element;       // of a move: the holder
  std::string field;         // of a move: the kind of the elements; empty if an element is added or removed
  nlohmann::ordered_json a;  // null: the field is absent; of a list: the number of its entries
  nlohmann::ordered_json b;

  // lists and moves
  std::int64_t count = 0;                // of entries that differ; 0: the field is no list
  std::optional<double> greatest;        // deviation of two finite numbers
  std::int64_t equalBefore = 0;          // entries before the first difference
  std::int64_t equalAfter = 0;           // entries after the last one; only if the lists differ in length
  std::vector<DifferentPlace> places{};  // the first ones
};

/// Prints differences as they are found.
class DifferencePrinter {
 public:
  virtual ~DifferencePrinter() = default;
  virtual void begin() {}
  virtual void add(const Difference& difference) = 0;
  virtual void end() {}
};

}  // namespace cli
