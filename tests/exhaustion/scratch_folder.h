#pragma once

#include <unistd.h>
#include <string>

namespace exhaustion {

/// The folder of this run. Made and removed by main.
inline std::string& scratchFolder() {
  static std::string folder;
  return folder;
}

/// The folder of this process, in which a trial saves; the trial makes and removes it.
inline std::string processFolder() { return scratchFolder() + "/" + std::to_string(getpid()); }

}  // namespace exhaustion
