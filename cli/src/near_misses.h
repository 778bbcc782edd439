#pragma once

#include <string>
#include <vector>

namespace cli {

/// Words that someone may have meant who wrote `word`: at most three, the nearest first.
std::vector<std::string> nearMisses(const std::string& word, const std::vector<std::string>& words);

/// ` (did you mean "a" or "b"?)`; empty if there are no words.
std::string suggestion(const std::vector<std::string>& words);

}  // namespace cli
