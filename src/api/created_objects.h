#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "../property/base.h"

class ztCAD_GMDDocument;

namespace ztcad {

/// Owns what the creation functions return, until the library is unloaded.
///
/// Elements are then destroyed. Records (coordinates, colours, lists of facets, ...) and documents that the
/// host did not delete are freed without running their destructors, because a host that is ending may already
/// have released what the destructors would use. What such an object owns is leaked.
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

  /// Takes a document over; it stays the caller's if memory runs out.
  template <typename Deleter>
  ztCAD_GMDDocument* keepDocument(std::unique_ptr<ztCAD_GMDDocument, Deleter>&& document) {
    m_documents.insert(document.get());
    return document.release();
  }
  /// Removes a document from the registry and returns it; null for any pointer that is no live document.
  std::unique_ptr<ztCAD_GMDDocument> takeDocument(ztCAD_GMDDocument* document);

 private:
  std::vector<std::unique_ptr<ztCAD_Base>> m_elements;
  std::vector<void*> m_records;
  std::unordered_set<ztCAD_GMDDocument*> m_documents;  // a set: deleting a document takes constant time
};

CreatedObjects& createdObjects();
/// Empties the registry; part of the unload step.
void releaseCreatedObjects();

/// Creates an object that the registry of elements owns.
template <typename Element, typename... Arguments>
Element* createElement(Arguments&&... arguments) {
  return createdObjects().keepElement(std::make_unique<Element>(std::forward<Arguments>(arguments)...));
}

/// Creates an object that the registry of records owns.
template <typename Record, typename... Arguments>
Record* createRecord(Arguments&&... arguments) {
  return createdObjects().keepRecord(std::make_unique<Record>(std::forward<Arguments>(arguments)...));
}

}  // namespace ztcad
