#pragma once

#include <functional>

class QString;
class ztCAD_Base;
struct ztCAD_DocumentContent;

namespace ztcad {

class NameRuns;

/// Makes the names of a document's elements unique within each level (the document, each structure, each
/// top-level or template detail), across kinds, in the order of the format (orders.h). Template structures
/// and template details keep their names; the check reports duplicates among these. Always true.
bool unifyNames(ztCAD_DocumentContent& content);

using VisitRename = std::function<void(const ztCAD_Base& element, const QString& former)>;

/// The same for a document that has just been read: what reading has shown is not looked at again.
/// @param names those of the children of the root
/// @param visit called with each renamed element and its former name, after all renames
void unifyNamesAsRead(ztCAD_DocumentContent& content, const NameRuns& names, const VisitRename& visit);

}  // namespace ztcad
