#include "unification.h"

#include "../../structure/level_names.h"
#include "../../structure/structure_pass.h"
#include "../name_counter.h"
#include "orders.h"

namespace ztcad {

namespace {

void renameDuplicatesIn(ztCAD_DocumentContent& content, ElementRenames& renames) {
  NameCounter names;
  visitInOrder(UnificationOrder(), content,
               [&](auto& elements) { renameDuplicates(elements, names, renames); });
}

/// Makes the names inside the elements of a document unique.
void unifyInElements(ztCAD_DocumentContent& content, StructurePass& pass, ElementRenames& renames) {
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
}

}  // namespace

bool unifyNames(ztCAD_DocumentContent& content) {
  ElementRenames renames;
  NameRuns names;
  if (!takeNames(UnificationOrder(), content, into(names)) || !names.areDifferent())
    renameDuplicatesIn(content, renames);
  StructurePass pass;
  unifyInElements(content, pass, renames);
  renames.keep();
  return true;
}

void unifyNamesAsRead(ztCAD_DocumentContent& content, const NameRuns& names, const VisitRename& visit) {
  ElementRenames renames;
  if (!names.areDifferent()) renameDuplicatesIn(content, renames);
  StructurePass pass(true);
  unifyInElements(content, pass, renames);
  renames.forEach(visit);
  renames.keep();
}

}  // namespace ztcad
