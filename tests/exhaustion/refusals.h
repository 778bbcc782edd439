#pragma once

#include <string>
#include <vector>

#include "refused_allocations.h"
#include "trial.h"

/// Runs a trial once for each allocation of its call: that allocation is refused, in a process of its own.

namespace exhaustion {

/// Cold: the first call of its function in the process. Warm: a later one.
enum class Temperature { Cold, Warm };

const char* nameOf(Temperature temperature);
std::string nameOf(const Row& row);

/// Which allocations are refused.
enum class Extent {
  Sample,  ///< the first 100, and 50 of the others
  All
};

struct Tally {
  long allocations = 0;    ///< of the call if none is refused
  long refusals = 0;       ///< processes in which one was refused
  long ended = 0;          ///< of which ended before the call returned
  long wrong = 0;          ///< of which returned, but not as promised
  std::string firstFault;  ///< how to repeat it; empty if there is none
};

/// Must be called in a process that has not called the library. Its objects are not freed: the process is
/// expected to end soon.
Tally refuseEach(const Row& row, Temperature temperature, Extent extent, unsigned seed);

/// One call in this process, for a debugger.
void refuseOne(const Row& row, Temperature temperature, long nth, refused_allocations::Mode mode);

}  // namespace exhaustion
