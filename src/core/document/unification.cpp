#include "unification.h"

#include "../../structure/structure_pass.h"
#include "../name_counter.h"
#include "orders.h"

bool ztcad::unifyNames(ztCAD_DocumentContent& content) {
  ElementRenames renames;
  NameCounter topLevel;
  visitInOrder(UnificationOrder(), content,
               [&](auto& elements) { renameDuplicates(elements, topLevel, renames); });
  StructurePass pass;
  pass.markAll(content.structures);
  pass.markAll(content.templateStructures);
  for (ztCAD_Structure& structure : content.structures)
    pass.unifyNames(structure, renames);
  for (ztCAD_TmplStructure& structure : content.templateStructures)
    pass.unifyNames(structure, renames);
  for (ztCAD_Detail& detail : content.details)
    unifyNames(detail.content(), renames);
  for (ztCAD_TmplDetail& detail : content.templateDetails)
    unifyNames(detail.content(), renames);
  renames.keep();
  return true;
}
