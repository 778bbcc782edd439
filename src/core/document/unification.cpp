#include "unification.h"

#include "../../structure/structure_pass.h"
#include "../name_counter.h"
#include "orders.h"

bool ztcad::unifyNames(ztCAD_DocumentContent& content,
                       const std::function<void(const ztCAD_Base& element, const QString& former)>& visit) {
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
  if (visit) renames.forEach(visit);
  renames.keep();
  return true;
}
