#pragma once

#include <ztCAD/ztCAD_c.h>

#include "difference.h"

namespace cli {

/// Numbers count as equal if they differ by at most the greater of two bounds.
struct Tolerance {
  double absolute = 0;
  double relative = 0;  // to the number of greater magnitude

  bool areEqual(double a, double b) const;
};

/// Reports what differs between two documents, in the order of the first one; what is only in the second
/// follows in each holder.
void compareDocuments(ztCAD_GMDDocument* a, ztCAD_GMDDocument* b, const Tolerance& tolerance,
                      DifferencePrinter& printer);

}  // namespace cli
