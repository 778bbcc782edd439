#pragma once

#include "_Common/ztParallel.h"

namespace ztcad {

/// The settings of this process. They exist before any load step: until the first `initialise` the mode is 1
/// and both counts are 0.
ztParallel& parallelSettings() noexcept;

/// Sets the mode for a scope; every exit restores the previous one.
class ParallelModeScope {
 public:
  explicit ParallelModeScope(std::int32_t mode) noexcept : m_previous(parallelSettings().setMode(mode)) {}
  ~ParallelModeScope() { parallelSettings().setMode(m_previous); }
  ParallelModeScope(const ParallelModeScope&) = delete;
  ParallelModeScope& operator=(const ParallelModeScope&) = delete;

 private:
  const std::int32_t m_previous;
};

}  // namespace ztcad
