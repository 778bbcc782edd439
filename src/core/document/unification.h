#pragma once

struct ztCAD_DocumentContent;

namespace ztcad {

/// Makes the names of a document's elements unique. The names of one level (the document's own elements, each
/// structure's, each detail's) are compared across kinds, in the order of the containers; template structures
/// and template details keep their names, duplicates of which are for the check to report. Always true.
bool unifyNames(ztCAD_DocumentContent& content);

}  // namespace ztcad
