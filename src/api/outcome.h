#pragma once

#include <string_view>

#include "../core/document/loading.h"
#include "c/documents.h"

namespace ztcad {

/// Fill every field of an outcome, which may be null.
/// @{
void report(ztCAD_Outcome* outcome, std::int32_t code, std::string_view message) noexcept;
void report(ztCAD_Outcome* outcome, const LoadOutcome& load);
/// The outcome until a load is done: it fails if memory runs out.
void reportNoMemory(ztCAD_Outcome* outcome) noexcept;
/// @}

/// Copies a text with its terminating zero into a host's buffer. A text that does not fit ends after a whole
/// UTF-8 character.
void cutInto(char* buffer, std::int32_t size, std::string_view text) noexcept;

/// A host's text of `size` bytes; of a negative size up to its first zero byte. Null counts as empty.
std::string_view countedText(const char* text, std::int64_t size);

inline constexpr std::string_view noMemory = "out of memory, or another failure inside the library";

}  // namespace ztcad
