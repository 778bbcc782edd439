#include "../failure.h"
#include "page_text.h"
#include "view.h"

namespace cli {

#if defined(ZTCAD_HAS_MESHOPTIMIZER)
ExitCode view(const ViewOptions& options) {
  const std::string page = viewerPage();
  if (page.empty())
    throw Failure(
        "this ztcad was built without the page that 'ztcad view' fills, which needs Node.js and npm");
  return viewWith(options, page);
}
#else
ExitCode view(const ViewOptions& /*options*/) {
  throw Failure("this ztcad was built without meshoptimizer, which 'ztcad view' needs");
}
#endif

}  // namespace cli
