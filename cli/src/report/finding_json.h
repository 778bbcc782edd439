#pragma once

#include <nlohmann/json.hpp>

#include "../check/finding.h"

namespace cli {

/// A finding as docs/check.schema.json describes it.
nlohmann::ordered_json findingJson(const Finding& finding);

}  // namespace cli
