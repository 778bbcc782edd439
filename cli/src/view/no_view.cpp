#include "../failure.h"
#include "view.h"

namespace cli {

ExitCode view(const ViewOptions& /*options*/) {
  throw Failure("this ztcad was built without meshoptimizer, which 'ztcad view' needs");
}

}  // namespace cli
