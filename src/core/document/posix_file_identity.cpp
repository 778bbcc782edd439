#include "posix_file_identity.h"

#include <cstring>
#include <optional>
#include <string_view>

#if defined(__linux__)
#include <sys/xattr.h>
#endif

namespace ztcad {

namespace {

bool copyMode(const struct stat& earlier, const Descriptor& file) {
  constexpr mode_t permissions = 07777;
  // a file system without permissions refuses to change them, even to what they are
  if ((file.status().st_mode & permissions) == (earlier.st_mode & permissions)) return true;
  return ::fchmod(file.number(), earlier.st_mode & permissions) == 0;
}

#if defined(__linux__)

constexpr const char* accessList = "system.posix_acl_access";

/// Whether the kernel computes the attribute from the content or the other attributes of a file.
bool isDigest(std::string_view attribute) {
  return attribute == "security.ima" || attribute == "security.evm";
}

/// The bytes that a call returns whose result does not fit into less.
/// @param call takes a buffer and its size and returns a size; with a size of 0 the one that is needed
template <typename Call>
std::optional<std::string> bytesFrom(Call&& call) {
  while (true) {
    const ssize_t needed = call(nullptr, 0);
    if (needed < 0) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(needed), '\0');
    const ssize_t size = needed == 0 ? 0 : call(bytes.data(), bytes.size());
    if (size >= 0) {
      bytes.resize(static_cast<std::size_t>(size));
      return bytes;
    }
    if (errno != ERANGE) return std::nullopt;  // otherwise it has grown in the meantime
  }
}

bool copyAttribute(const std::string& name, const char* attribute, const Descriptor& file) {
  const auto value = bytesFrom(
      [&](char* buffer, std::size_t size) { return ::getxattr(name.c_str(), attribute, buffer, size); });
  if (!value) return errno == ENODATA;  // removed in the meantime
  const auto present = bytesFrom(
      [&](char* buffer, std::size_t size) { return ::fgetxattr(file.number(), attribute, buffer, size); });
  return present == value || ::fsetxattr(file.number(), attribute, value->data(), value->size(), 0) == 0;
}

bool copyAttributes(const std::string& name, const Descriptor& file) {
  const auto attributes =
      bytesFrom([&](char* buffer, std::size_t size) { return ::listxattr(name.c_str(), buffer, size); });
  if (!attributes) return errno == ENOTSUP || errno == ENOENT;
  for (const char* attribute = attributes->c_str(); *attribute != '\0';
       attribute += std::strlen(attribute) + 1)
    if (!isDigest(attribute) && !copyAttribute(name, attribute, file)) return false;
  return true;
}

/// A new file may have inherited an access list from its folder.
bool removeAccessList(const Descriptor& file) {
  return ::fremovexattr(file.number(), accessList) == 0 || errno == ENODATA || errno == ENOTSUP;
}

#else

bool copyAttributes(const std::string& /*name*/, const Descriptor& /*file*/) { return true; }
bool removeAccessList(const Descriptor& /*file*/) { return true; }

#endif

}  // namespace

bool copyOwner(const struct stat& earlier, const Descriptor& file) {
  const struct stat own = file.status();
  if (own.st_uid == earlier.st_uid && own.st_gid == earlier.st_gid) return true;
  return ::fchown(file.number(), earlier.st_uid, earlier.st_gid) == 0;
}

bool copyPermissions(const std::string& name, const struct stat& earlier, const Descriptor& file) {
  // in this order: with an access list, the mode's group bits are the list's mask
  return removeAccessList(file) && copyMode(earlier, file) && copyAttributes(name, file);
}

}  // namespace ztcad
