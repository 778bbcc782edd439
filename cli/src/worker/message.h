#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "../check/review_file.h"

namespace cli {

// Messages between the program and its workers. A request names a file, a reply is a review. Each is
// preceded by its length. Both sides are the same program on the same machine.

inline constexpr std::size_t frameHeaderSize = sizeof(std::uint64_t);

/// The message with its length before it.
std::string framed(std::string_view message);
/// The length that a header of `frameHeaderSize` bytes states.
std::uint64_t lengthIn(const char* header);

std::string toMessage(const ReviewRequest& request);
/// Nothing if the message is damaged, here and below.
std::optional<ReviewRequest> requestFrom(std::string_view message);

std::string toMessage(const Review& review);
std::optional<Review> reviewFrom(std::string_view message);

}  // namespace cli
