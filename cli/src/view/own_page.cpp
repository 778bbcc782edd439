#include "../failure.h"
#include "page_text.h"
#include "view.h"

namespace cli {

ExitCode view(const ViewOptions& options) {
  const std::string page = viewerPage();
  if (page.empty())
    throw Failure(
        "this ztcad was built without the page that 'ztcad view' fills, which needs Node.js and npm");
  return viewWith(options, page);
}

}  // namespace cli
