#include "unification.h"

#include "../../structure/structure_pass.h"
#include "../name_counter.h"
#include "orders.h"

bool ztcad::unifyNames(ztCAD_DocumentContent& content) {
  NameCounter topLevel;
  visitInOrder(UnificationOrder(), content,
               [&topLevel](auto& elements) { renameDuplicates(elements, topLevel); });
  StructurePass pass;
  pass.markAll(content.structures);
  pass.markAll(content.templateStructures);
  for (ztCAD_Structure& structure : content.structures)
    pass.unifyNames(structure);
  for (ztCAD_TmplStructure& structure : content.templateStructures)
    pass.unifyNames(structure);
  for (ztCAD_Detail& detail : content.details)
    unifyNames(detail.content());
  for (ztCAD_TmplDetail& detail : content.templateDetails)
    unifyNames(detail.content());
  return true;
}
