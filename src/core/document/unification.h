#pragma once

struct ztCAD_DocumentContent;

namespace ztcad {

/// Makes the names of a document's elements unique within each level (the document, each structure, each
/// top-level or template detail), across kinds, in the order of the format (orders.h). Template structures
/// and template details keep their names; the check reports duplicates among these. Always true.
bool unifyNames(ztCAD_DocumentContent& content);

}  // namespace ztcad
