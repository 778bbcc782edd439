#pragma once

#include <memory>

#include "../output.h"
#include "diff.h"
#include "difference.h"

namespace cli {

std::unique_ptr<DifferencePrinter> makeDiffText(Output& output, const DiffOptions& options);
std::unique_ptr<DifferencePrinter> makeDiffJson(Output& output, const DiffOptions& options);

}  // namespace cli
