#pragma once

#include <functional>

class ztCAD_Base;
struct ztCAD_DocumentContent;

namespace ztcad {

/// What is known of a document's names.
enum class Names {
  Any,
  Unique,  // `unifyNames` found nothing to rename
};

/// Whether the names of template points, template mass-inertia elements, template details and template
/// structures, by which references find them, are unique within each kind, and every structure is sound.
/// Template lines and template solids may share names: documents with such names are in use.
bool passesCheck(const ztCAD_DocumentContent& content);

/// The same for a document that has just been read: structures that read well are sound and are not visited.
bool passesCheckAsRead(const ztCAD_DocumentContent& content, Names names);

/// Calls `visit` with each of these templates whose name one before it in its container has.
void forEachDuplicate(const ztCAD_DocumentContent& content,
                      const std::function<void(const ztCAD_Base& element)>& visit, Names names = Names::Any);

}  // namespace ztcad
