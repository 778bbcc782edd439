#pragma once

#include <string>
#include <vector>

#include "core/container.h"

/// A container of elements that have a name only.

struct Ball {
  bool isSame(const void* address) const { return this == address; }
  std::string name;
};

using Balls = ztCAD_Cont<Ball>;

inline Balls ballsNamed(const std::vector<std::string>& names) {
  Balls balls;
  for (const std::string& name : names)
    balls.add(Ball{name});
  return balls;
}

inline std::vector<std::string> namesOf(const Balls& balls) {
  std::vector<std::string> names;
  for (const Ball& ball : balls)
    names.push_back(ball.name);
  return names;
}

using Names = std::vector<std::string>;
