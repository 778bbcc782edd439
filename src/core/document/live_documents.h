#pragma once

class ztCAD_GMDDocument;

namespace ztcad {

/// The set of the documents that exist, whoever created them. A pointer that a host passes is looked up here
/// before it is used, because the document may have been deleted. Takes constant time.
/// @{
bool isLive(const void* document) noexcept;
/// The document, or null if the pointer is null or leads to none.
template <typename Document>
Document* live(Document* document) noexcept {
  return isLive(document) ? document : nullptr;
}
/// @}

/// Called by the constructor and destructor of each document.
/// @{
void addLiveDocument(const ztCAD_GMDDocument& document);
void removeLiveDocument(const ztCAD_GMDDocument& document) noexcept;
/// @}

/// Empties the set; part of the unload step.
void releaseLiveDocuments();

}  // namespace ztcad
