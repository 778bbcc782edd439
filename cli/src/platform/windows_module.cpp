#include "module.h"

#include "../failure.h"

namespace cli {

void* functionOfModule(const char* /*module*/, const char* /*function*/) {
  throw Failure("this format cannot be read on Windows");
}

}  // namespace cli
