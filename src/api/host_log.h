#pragma once

namespace ztcad {
/// Part of the unload step: after it the library calls no function of the host.
void releaseHostLog();
}  // namespace ztcad
