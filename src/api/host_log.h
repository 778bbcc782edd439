#pragma once

namespace ztcad {
/// Part of the unload step: no function of the host is called any more.
void releaseHostLog();
}  // namespace ztcad
