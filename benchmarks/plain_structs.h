#pragma once

#include <cstddef>

#include "documents.h"
#include "measurement.h"

namespace benchmarks {

/// The same work on plain structs: names compared in a hash table, lists destroyed, records and lists filled.

Measurement plainUnify(std::size_t points);
Measurement plainDelete(const Document& document);
Measurement plainBuildVertices(std::size_t count);
Measurement plainBuildPoints(std::size_t count);

}  // namespace benchmarks
