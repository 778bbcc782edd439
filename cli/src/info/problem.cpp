#include "problem.h"

namespace cli {

std::string problemOf(const ztCAD_Outcome& outcome) {
  std::string text = outcome.message;
  if (outcome.line > 0)
    text += " (line " + std::to_string(outcome.line) + ", column " + std::to_string(outcome.column) + ")";
  return text;
}

}  // namespace cli
