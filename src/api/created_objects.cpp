#include "created_objects.h"

#include <new>

#include "../core/document/document.h"
#include "../support/process_object.h"

namespace ztcad {

namespace {
ProcessObject<CreatedObjects> registry;
}

CreatedObjects::~CreatedObjects() {
  for (void* record : m_records)
    ::operator delete(record);
  for (ztCAD_GMDDocument* document : m_documents)
    ::operator delete(document);
}

std::unique_ptr<ztCAD_GMDDocument> CreatedObjects::takeDocument(ztCAD_GMDDocument* document) {
  const bool alive = m_documents.erase(document) == 1;
  return std::unique_ptr<ztCAD_GMDDocument>(alive ? document : nullptr);
}

CreatedObjects& createdObjects() { return registry.get(); }

void releaseCreatedObjects() { registry.release(); }

}  // namespace ztcad
