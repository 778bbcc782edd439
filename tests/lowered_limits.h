#pragma once

#include <cstddef>
#include <utility>

#include "text/text_limits.h"

/// Limits of texts and lists that are lower until the end of a test.
class LoweredLimits {
 public:
  explicit LoweredLimits(const ztcad::Limits& lowered) : m_usual(std::exchange(ztcad::limits, lowered)) {}
  LoweredLimits(const LoweredLimits&) = delete;
  LoweredLimits& operator=(const LoweredLimits&) = delete;
  ~LoweredLimits() { ztcad::limits = m_usual; }

  static ztcad::Limits text(std::size_t units) {
    ztcad::Limits lowered;
    lowered.text = units;
    return lowered;
  }
  static ztcad::Limits list(std::size_t triples) {
    ztcad::Limits lowered;
    lowered.list = triples;
    return lowered;
  }
  static ztcad::Limits structures(std::size_t count) {
    ztcad::Limits lowered;
    lowered.structures = count;
    return lowered;
  }

 private:
  const ztcad::Limits m_usual;
};
