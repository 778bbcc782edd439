#include "live_documents.h"

#include <unordered_set>

#include "../../support/process_object.h"

namespace ztcad {

namespace {
ProcessObject<std::unordered_set<const void*>> liveDocuments;
}

bool isLive(const void* document) noexcept {
  return document && liveDocuments.exists() && liveDocuments.get().count(document) != 0;
}

void addLiveDocument(const ztCAD_GMDDocument& document) { liveDocuments.get().insert(&document); }

void removeLiveDocument(const ztCAD_GMDDocument& document) noexcept {
  if (liveDocuments.exists()) liveDocuments.get().erase(&document);
}

void releaseLiveDocuments() { liveDocuments.release(); }

}  // namespace ztcad
