#include "settings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace ztcad::inspect {

namespace {

bool isPermutation(const std::int32_t* order, int count) {
  unsigned seen = 0;
  for (int i = 0; i < count; ++i) {
    if (order[i] < 0 || order[i] >= count) return false;
    seen |= 1U << static_cast<unsigned>(order[i]);
  }
  return seen == (1U << static_cast<unsigned>(count)) - 1;
}

bool isFlag(std::int32_t value) { return value == 0 || value == 1; }

bool isTolerance(double value) { return std::isfinite(value) && value >= 0; }

/// One member, or one group of them: whether it is right, what is wrong, and how it gets its default.
struct Check {
  bool (*isRight)(const ztCADInspect_Options&);
  const char* problem;
  void (*reset)(ztCADInspect_Options& options, const ztCADInspect_Options& defaults);
};

using Options = ztCADInspect_Options;

const Check checks[] = {
    {[](const Options& o) { return isPermutation(o.systemOrder, 4); },
     "The order of the parts of a coordinate system is no permutation of 0 to 3.",
     [](Options& o, const Options& d) {
       std::copy(std::begin(d.systemOrder), std::end(d.systemOrder), o.systemOrder);
     }},
    {[](const Options& o) { return isFlag(o.systemIsTransposed); }, "systemIsTransposed is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.systemIsTransposed = d.systemIsTransposed; }},
    {[](const Options& o) { return isFlag(o.ownSystems); }, "ownSystems is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.ownSystems = d.ownSystems; }},
    {[](const Options& o) {
       return o.templateSystem >= ztCADInspect_TemplateInside &&
              o.templateSystem <= ztCADInspect_TemplateIgnored;
     },
     "templateSystem is not 0, 1 or 2.",
     [](Options& o, const Options& d) { o.templateSystem = d.templateSystem; }},
    {[](const Options& o) { return isPermutation(o.massOrder, 10); },
     "The order of the mass-inertia numbers is no permutation of 0 to 9.",
     [](Options& o, const Options& d) {
       std::copy(std::begin(d.massOrder), std::end(d.massOrder), o.massOrder);
     }},
    {[](const Options& o) { return isFlag(o.productsAreIntegrals); },
     "productsAreIntegrals is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.productsAreIntegrals = d.productsAreIntegrals; }},
    {[](const Options& o) { return isFlag(o.momentsAboutOrigin); }, "momentsAboutOrigin is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.momentsAboutOrigin = d.momentsAboutOrigin; }},
    {[](const Options& o) { return isFlag(o.massInHolderFrame); }, "massInHolderFrame is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.massInHolderFrame = d.massInHolderFrame; }},
    {[](const Options& o) { return std::isfinite(o.density); }, "The density is no finite number.",
     [](Options& o, const Options& d) { o.density = d.density; }},
    {[](const Options& o) { return isTolerance(o.systemTolerance); },
     "The tolerance of systems is negative or no finite number.",
     [](Options& o, const Options& d) { o.systemTolerance = d.systemTolerance; }},
    {[](const Options& o) { return isTolerance(o.degenerateTolerance); },
     "The tolerance of degenerate facets is negative or no finite number.",
     [](Options& o, const Options& d) { o.degenerateTolerance = d.degenerateTolerance; }},
    {[](const Options& o) { return isTolerance(o.principalTolerance); },
     "The tolerance of principal moments is negative or no finite number.",
     [](Options& o, const Options& d) { o.principalTolerance = d.principalTolerance; }},
    {[](const Options& o) { return isTolerance(o.declaredTolerance); },
     "The tolerance of declared data is negative or no finite number.",
     [](Options& o, const Options& d) { o.declaredTolerance = d.declaredTolerance; }},
    {[](const Options& o) { return isFlag(o.readFiles); }, "readFiles is neither 0 nor 1.",
     [](Options& o, const Options& d) { o.readFiles = d.readFiles; }},
    {[](const Options& o) { return o.greatestFileSize >= 0; }, "The greatest size of a file is negative.",
     [](Options& o, const Options& d) { o.greatestFileSize = d.greatestFileSize; }},
    {[](const Options& o) { return o.greatestFileCount >= 0; }, "The greatest number of files is negative.",
     [](Options& o, const Options& d) { o.greatestFileCount = d.greatestFileCount; }},
    {[](const Options& o) { return o.greatestDepth >= 0 && o.greatestDepth <= 256; },
     "The greatest depth is not between 0 and 256.",
     [](Options& o, const Options& d) { o.greatestDepth = d.greatestDepth; }},
    {[](const Options& o) { return o.greatestItemCount >= 0; }, "The greatest number of items is negative.",
     [](Options& o, const Options& d) { o.greatestItemCount = d.greatestItemCount; }},
};

}  // namespace

ztCADInspect_Options defaultOptions() {
  ztCADInspect_Options options = {};
  options.size = sizeof options;
  for (int i = 0; i < 4; ++i)
    options.systemOrder[i] = i;
  options.ownSystems = 1;
  options.templateSystem = ztCADInspect_TemplateInside;
  for (int i = 0; i < 10; ++i)
    options.massOrder[i] = i;
  options.systemTolerance = 1e-5;
  options.degenerateTolerance = 1e-12;
  options.principalTolerance = 5e-6;
  options.declaredTolerance = 0.01;
  options.readFiles = 1;
  options.greatestFileSize = std::int64_t{1} << 30;
  options.greatestFileCount = 1000;
  options.greatestDepth = 256;
  options.greatestItemCount = 5000000;
  options.threads = 1;
  return options;
}

ztCADInspect_Options completed(const ztCADInspect_Options& options) {
  ztCADInspect_Options complete = defaultOptions();
  // a host that was built with an earlier header has a shorter struct
  const std::int64_t size = std::min<std::int64_t>(options.size, sizeof complete);
  if (size > 0) std::memcpy(&complete, &options, static_cast<std::size_t>(size));
  complete.size = sizeof complete;
  return complete;
}

const char* problemOf(const ztCADInspect_Options& options) {
  for (const Check& check : checks)
    if (!check.isRight(options)) return check.problem;
  return nullptr;
}

Settings settingsFrom(const ztCADInspect_Options* options) {
  Settings settings = {options ? completed(*options) : defaultOptions(), {}};
  const ztCADInspect_Options defaults = defaultOptions();
  for (const Check& check : checks)
    if (!check.isRight(settings.values)) check.reset(settings.values, defaults);
  if (settings.values.allowedFolder) settings.allowedFolder = settings.values.allowedFolder;
  settings.values.allowedFolder = nullptr;
  return settings;
}

}  // namespace ztcad::inspect
