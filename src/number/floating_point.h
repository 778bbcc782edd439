#pragma once

#include <cfenv>

#include "../text/sse2.h"

namespace ztcad {

/// The default floating-point environment for a scope: rounding to nearest and no traps, and on x86 subnormal
/// numbers. Numbers are then read and printed in the same way in every host. The host's environment, flags
/// included, is restored at the end.
class DefaultFloatingPoint {
 public:
  DefaultFloatingPoint() {
#if defined(ZTCAD_SSE2)
    // The register itself: fesetenv of MinGW sets it only in part, and fegetenv is slow. The library does not
    // use the other floating-point unit of x86.
    _mm_setcsr(initialControl);
#else
    std::feholdexcept(&m_hosts);
    std::fesetround(FE_TONEAREST);
#endif
  }
  DefaultFloatingPoint(const DefaultFloatingPoint&) = delete;
  DefaultFloatingPoint& operator=(const DefaultFloatingPoint&) = delete;
  ~DefaultFloatingPoint() {
#if defined(ZTCAD_SSE2)
    _mm_setcsr(m_hosts);
#else
    std::fesetenv(&m_hosts);
#endif
  }

 private:
#if defined(ZTCAD_SSE2)
  static constexpr unsigned initialControl = 0x1f80;  // as a processor starts: all exceptions masked

  const unsigned m_hosts = _mm_getcsr();
#else
  std::fenv_t m_hosts = {};
#endif
};

}  // namespace ztcad
