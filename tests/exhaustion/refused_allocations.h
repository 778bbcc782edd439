#pragma once

/// Refuses memory: the program replaces malloc, so this reaches every allocation of the process, those inside
/// Qt, OpenMP and the C++ runtime included. With glibc only.

namespace refused_allocations {

enum class Mode {
  Once,        ///< one allocation is refused, later ones succeed
  FromThereOn  ///< that allocation and all later ones are refused
};

/// From now on allocations are counted, and the `nth` (from 1) is refused; 0: none.
void start(long nth, Mode mode);
/// Ends this.
/// @return the number of allocations since `start`, refused ones included
long stop();

}  // namespace refused_allocations
