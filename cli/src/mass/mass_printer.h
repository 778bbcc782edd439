#pragma once

#include <ztCAD/inspect.h>

#include <memory>
#include <optional>
#include <string>

#include "../output.h"

namespace cli {

/// Prints the mass properties of a document.
class MassPrinter {
 public:
  virtual ~MassPrinter() = default;
  virtual void add(const ztCADInspect_MassRow& row) = 0;
  virtual void end(const ztCADInspect_MassRow& total) = 0;
};

/// @param file    as it was named
/// @param density nothing: not known
std::unique_ptr<MassPrinter> makeMassText(Output& output);
std::unique_ptr<MassPrinter> makeMassJson(Output& output, const std::string& file,
                                          std::optional<double> density);

inline bool isDeclared(const ztCADInspect_MassRow& row) {
  return row.declaredProblem == ztCADInspect_MassKnown;
}
inline bool isComputed(const ztCADInspect_MassRow& row) {
  return row.computedProblem == ztCADInspect_MassKnown;
}

}  // namespace cli
