#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dice.h"
#include "mutated_xml.h"
#include "well_formedness_rows.h"

// Texts for comparing builds of the library: the same in every build and on every system.

namespace sample_texts {

struct Sample {
  std::string name;
  std::string bytes;
};

using Samples = std::vector<Sample>;

inline Samples wellFormednessRows() {
  Samples samples;
  for (const well_formedness::Row& row : well_formedness::rows())
    samples.push_back({std::string("row/") + row.name, row.xml});
  return samples;
}

/// The files of a folder and of the folders in it, in the order of their names.
inline Samples filesIn(const std::filesystem::path& folder) {
  Samples samples;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + entry.path().string());
    samples.push_back(
        {folder.filename().string() + '/' + entry.path().lexically_relative(folder).generic_string(),
         {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}});
  }
  std::sort(samples.begin(), samples.end(), [](const Sample& a, const Sample& b) { return a.name < b.name; });
  return samples;
}

/// Replaces some characters of numbers, which leaves most documents well-formed.
inline void changeNumbers(std::string& bytes, Dice& dice) {
  constexpr std::string_view replaced = "0123456789.,;";
  constexpr std::string_view replacements = "0123456789.,;-+eE \tnaif";
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < bytes.size(); ++at)
    if (replaced.find(bytes[at]) != std::string_view::npos) places.push_back(at);
  if (places.empty()) return;
  for (int changes = dice.roll(6); changes >= 0; --changes) {
    const std::size_t at = dice.pick(places);
    bytes[at] = dice.pick(replacements);
  }
}

/// Random changes of these texts, of those that are not too long: every other one is a document that loads,
/// with changed numbers; the others are changed in any way.
inline Samples mutated(const Samples& originals, int count) {
  constexpr std::size_t longest = 10000;
  Samples all;
  Samples good;
  for (const Sample& sample : originals) {
    if (sample.bytes.size() > longest) continue;
    all.push_back(sample);
    if (sample.name.find("/P_") != std::string::npos) good.push_back(sample);
  }
  if (good.empty()) throw std::runtime_error("no document to mutate");
  Dice dice(1);
  Samples samples;
  for (int i = 0; i < count; ++i) {
    std::string bytes = dice.pick(i % 2 == 0 ? good : all).bytes;
    if (i % 2 == 0) {
      changeNumbers(bytes, dice);
    } else {
      for (int mutations = dice.roll(3); mutations >= 0; --mutations)
        mutate(bytes, dice);
    }
    samples.push_back({"mutated/" + std::to_string(i), std::move(bytes)});
  }
  return samples;
}

inline void append(Samples& samples, const Samples& more) {
  samples.insert(samples.end(), more.begin(), more.end());
}

}  // namespace sample_texts
