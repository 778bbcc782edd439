#pragma once

#include <cfenv>

namespace ztcad {

/// The default floating-point environment for a scope: rounding to nearest, no traps, and where the processor
/// has the choice, subnormal numbers. Numbers are then read and printed in the same way in every host. The
/// host's environment, exception flags included, is restored at the end.
class DefaultFloatingPoint {
 public:
  DefaultFloatingPoint() {
    std::fegetenv(&m_hosts);
    std::fesetenv(FE_DFL_ENV);
  }
  DefaultFloatingPoint(const DefaultFloatingPoint&) = delete;
  DefaultFloatingPoint& operator=(const DefaultFloatingPoint&) = delete;
  ~DefaultFloatingPoint() { std::fesetenv(&m_hosts); }

 private:
  std::fenv_t m_hosts = {};
};

}  // namespace ztcad
