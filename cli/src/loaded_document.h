#pragma once

#include <ztCAD/ztCAD_c.h>

#include <memory>

namespace cli {

struct EndDocument {
  void operator()(ztCAD_GMDDocument* document) const { ztCAD_endDocument(document); }
};

/// A document that ends with this pointer.
using LoadedDocument = std::unique_ptr<ztCAD_GMDDocument, EndDocument>;

}  // namespace cli
