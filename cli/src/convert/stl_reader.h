#pragma once

#include <string_view>

#include "model.h"

namespace cli {

/// Reads an STL file, binary or text: a node for each solid. Every triangle is kept. Throws `Failure` if the
/// bytes are no STL file or end too early.
Model readStl(std::string_view bytes);

}  // namespace cli
