#pragma once

#include "element_list.h"
#include "json_writer.h"

namespace cli {

/// Writes the columns that describe each element by itself: kind to own coordinate system.
void writeElementColumns(JsonWriter& json, const ElementList& elements);

}  // namespace cli
