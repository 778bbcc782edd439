#pragma once

namespace exhaustion {

/// Loads and saves a document of so many megabytes under twenty limits of the address space, from what the
/// process has at its start to what it needs. Each time both calls must return, with a document or a file
/// that is complete, or with a code.
bool runUnderLimits(int megabytes);

}  // namespace exhaustion
