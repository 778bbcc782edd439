#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
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

/// Random changes of these texts, of those that are not too long.
inline Samples mutated(const Samples& originals, int count) {
  constexpr std::size_t longest = 10000;
  Samples shortOnes;
  std::copy_if(originals.begin(), originals.end(), std::back_inserter(shortOnes),
               [](const Sample& sample) { return sample.bytes.size() <= longest; });
  Dice dice(1);
  Samples samples;
  for (int i = 0; i < count; ++i) {
    std::string bytes = dice.pick(shortOnes).bytes;
    for (int mutations = dice.roll(4); mutations >= 0; --mutations)
      mutate(bytes, dice);
    samples.push_back({"mutated/" + std::to_string(i), std::move(bytes)});
  }
  return samples;
}

inline void append(Samples& samples, const Samples& more) {
  samples.insert(samples.end(), more.begin(), more.end());
}

}  // namespace sample_texts
