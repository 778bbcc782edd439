#pragma once

#include <cstdint>
#include <string>

#include "../check/finding.h"

namespace cli {

/// The name of a file as a URI reference: percent-encoded, and relative unless the file is outside the
/// current folder and named by its full path.
std::string sarifUri(const std::string& file);

/// A message in which braces are no placeholders.
std::string sarifMessage(const std::string& text);

/// Characters from the place of a finding to the end of its region: the attribute's name, or "<" and the tag.
std::int64_t regionLength(const Finding& finding);

}  // namespace cli
