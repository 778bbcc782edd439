#pragma once

#include <memory>
#include <string>

#include "../output.h"
#include "summary.h"

namespace cli {

/// A file that was loaded or not.
struct InfoSubject {
  std::string file;
  ztCAD_Outcome outcome{};
  ztCAD_GMDDocument* document = nullptr;  // null: the outcome says why
};

/// Prints what `info` reports, in one of two forms.
class InfoPrinter {
 public:
  virtual ~InfoPrinter() = default;
  virtual void begin() {}
  virtual void add(const InfoSubject& subject) = 0;
  virtual void end() {}
};

/// @param tree whether every element is listed too
std::unique_ptr<InfoPrinter> makeInfoText(Output& output, bool tree);
std::unique_ptr<InfoPrinter> makeInfoJson(Output& output, bool tree);

}  // namespace cli
