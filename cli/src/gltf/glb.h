#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cli::gltf {

// constants of glTF
inline constexpr int unsignedInt = 5125;
inline constexpr int floatingPoint = 5126;
inline constexpr int arrayBuffer = 34962;
inline constexpr int elementArrayBuffer = 34963;
inline constexpr int points = 0;
inline constexpr int lineStrip = 3;

/// The member "asset", which names the format's version and the program.
std::string assetMember();

/// A member that is a list of JSON texts, with a comma before it; empty for an empty list, which glTF
/// forbids.
std::string listMember(const char* name, const std::vector<std::string>& items);

/// The start of a GLB file: everything before the bytes of its buffer.
/// @param json        the text of the JSON chunk
/// @param binarySize  bytes of the buffer, a multiple of four, which follow
/// Throws `Failure` if the file would be longer than the format allows.
std::string glbStart(std::string json, std::uint64_t binarySize);

}  // namespace cli::gltf
