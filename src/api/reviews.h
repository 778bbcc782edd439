#pragma once

#include "c/reviews.h"

namespace ztcad {

/// Forgets which reviews are live; part of the unload step. Those that the host has not ended are leaked.
void releaseReviews();

}  // namespace ztcad
