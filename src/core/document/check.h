#pragma once

struct ztCAD_DocumentContent;

namespace ztcad {

/// Whether the names of templates, by which references find them, are unique in each kind.
bool passesCheck(const ztCAD_DocumentContent& content);

}  // namespace ztcad
