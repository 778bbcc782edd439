#pragma once

#include <sys/stat.h>
#include <string>

#include "posix_descriptor.h"

namespace ztcad {

/// Gives a file the owner and group of an earlier one.
/// @return false if the system refuses; `errno` says why
bool copyOwner(const struct stat& earlier, const Descriptor& file);

/// Gives a file the permissions and extended attributes (access control lists among them) of an earlier one.
/// @param name the earlier file
/// @return false if the system refuses; `errno` says why
bool copyPermissions(const std::string& name, const struct stat& earlier, const Descriptor& file);

}  // namespace ztcad
