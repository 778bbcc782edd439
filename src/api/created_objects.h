#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "../property/base.h"

class ztCAD_GMDDocument;

namespace ztcad {

/// Owns what the creation functions hand out, until the library is unloaded.
///
/// Elements are then destroyed. Of records (coordinates, colours, lists of facets, ...) and of documents that
/// the host did not delete only the memory is given back, without their destructors: a host that is ending
/// may have taken away what those would touch. What such an object owns itself is therefore lost.
class CreatedObjects {
 public:
  CreatedObjects() = default;
  CreatedObjects(const CreatedObjects&) = delete;
  CreatedObjects& operator=(const CreatedObjects&) = delete;
  ~CreatedObjects();

  template <typename Element>
  Element* keepElement(std::unique_ptr<Element> element) {
    Element* const kept = element.get();
    m_elements.push_back(std::move(element));
    return kept;
  }

  template <typename Record>
  Record* keepRecord(std::unique_ptr<Record> record) {
    m_records.push_back(record.get());
    return record.release();
  }

  template <typename Deleter>
  ztCAD_GMDDocument* keepDocument(std::unique_ptr<ztCAD_GMDDocument, Deleter> document) {
    m_documents.insert(document.get());
    return document.release();
  }
  /// Takes a document out of the registry; nothing when it is not one that is alive.
  std::unique_ptr<ztCAD_GMDDocument> takeDocument(ztCAD_GMDDocument* document);

 private:
  std::vector<std::unique_ptr<ztCAD_Base>> m_elements;
  std::vector<void*> m_records;
  std::unordered_set<ztCAD_GMDDocument*>
      m_documents;  // apart from the records: deleting one searches nothing
};

CreatedObjects& createdObjects();
/// Part of the unload step.
void releaseCreatedObjects();

/// Makes an object on the heap and hands it to the registry of elements.
template <typename Element, typename... Arguments>
Element* createElement(Arguments&&... arguments) {
  return createdObjects().keepElement(std::make_unique<Element>(std::forward<Arguments>(arguments)...));
}

/// The same for the registry of records.
template <typename Record, typename... Arguments>
Record* createRecord(Arguments&&... arguments) {
  return createdObjects().keepRecord(std::make_unique<Record>(std::forward<Arguments>(arguments)...));
}

}  // namespace ztcad
