#pragma once

#include <ztCAD/ztCAD_c.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "declared_mass.h"

namespace cli {

/// Smallest and greatest coordinates.
struct Box {
  std::array<double, 3> min{};
  std::array<double, 3> max{};
};

struct Header {
  std::optional<std::uint32_t> majorVersion;
  std::optional<std::uint32_t> minorVersion;
  std::optional<std::string> inform;
  std::string state;
};

/// What a document holds, with everything nested in its structures, details and templates.
struct DocumentSummary {
  Header header;
  std::map<std::int32_t, std::int64_t> elements;  // number of each kind that occurs
  std::int64_t vertices = 0;
  std::int64_t facets = 0;
  /// Of the finite coordinates as they are written: coordinate systems and placements are not applied.
  std::optional<Box> box;
  DeclaredMass mass;
};

DocumentSummary summarise(ztCAD_GMDDocument* document);

}  // namespace cli
