#pragma once

#include <string_view>

namespace cli {

/// The page of a rule, docs/rules/<rule>.md as it was when the program was built; empty if there was none.
std::string_view rulePage(std::string_view rule);

}  // namespace cli
