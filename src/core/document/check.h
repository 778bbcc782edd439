#pragma once

#include <functional>

class ztCAD_Base;
struct ztCAD_DocumentContent;

namespace ztcad {

/// Whether the names of template points, template mass-inertia elements, template details and template
/// structures, by which references find them, are unique within each kind, and every structure is sound.
/// Template lines and template solids may share names: documents with such names are in use.
bool passesCheck(const ztCAD_DocumentContent& content);

/// Calls `visit` with each of these templates whose name one before it in its container has.
void forEachDuplicate(const ztCAD_DocumentContent& content,
                      const std::function<void(const ztCAD_Base& element)>& visit);

}  // namespace ztcad
