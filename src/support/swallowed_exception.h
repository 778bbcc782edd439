#pragma once

namespace ztcad {

/// Reports the exception that is being handled to the assertion log: the boundary lets none through. Memory
/// exhaustion is reported to an installed writer only, because Qt's warning output, which serves where there
/// is none, allocates.
///
/// @param function the function that ends early; named in the report as the file is
void reportSwallowedException(const char* function, unsigned line) noexcept;

}  // namespace ztcad
