#pragma once

struct ztCAD_DocumentContent;

namespace ztcad {

/// Whether the names of templates, by which references find them, are unique in each kind, and every
/// structure is sound. Template lines and template solids of one name are let pass: documents with such are
/// in use.
bool passesCheck(const ztCAD_DocumentContent& content);

}  // namespace ztcad
