#pragma once

#include "_Common/ztParallel.h"

namespace ztcad {

/// The record of this process. It needs no load step to exist: until the first `initialise` it holds mode 1
/// and counts of 0.
ztParallel& parallelSettings() noexcept;

/// Holds another mode for the length of a scope; the one before comes back on every way out.
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
