#pragma once

#include <functional>

class QString;
class ztCAD_Base;
struct ztCAD_DocumentContent;

namespace ztcad {

/// Makes the names of a document's elements unique within each level (the document, each structure, each
/// top-level or template detail), across kinds, in the order of the format (orders.h). Template structures
/// and template details keep their names; the check reports duplicates among these. Always true.
/// @param visit called with each renamed element and its former name, after all renames
bool unifyNames(ztCAD_DocumentContent& content,
                const std::function<void(const ztCAD_Base& element, const QString& former)>& visit = {});

}  // namespace ztcad
