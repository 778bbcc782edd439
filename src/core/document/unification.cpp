#include "unification.h"

#include "../name_counter.h"
#include "document.h"

bool ztcad::unifyNames(ztCAD_DocumentContent& content) {
  NameCounter topLevel;
  renameDuplicates(content.structures, topLevel);
  renameDuplicates(content.structureReferences, topLevel);
  renameDuplicates(content.points, topLevel);
  renameDuplicates(content.lines, topLevel);
  renameDuplicates(content.spheres, topLevel);
  renameDuplicates(content.triangles, topLevel);
  renameDuplicates(content.mipElements, topLevel);
  renameDuplicates(content.details, topLevel);
  renameDuplicates(content.detailReferences, topLevel);
  renameDuplicates(content.templatePoints, topLevel);
  renameDuplicates(content.pointReferences, topLevel);
  renameDuplicates(content.templateLines, topLevel);
  renameDuplicates(content.lineReferences, topLevel);
  renameDuplicates(content.templateMipElements, topLevel);
  renameDuplicates(content.mipReferences, topLevel);
  renameDuplicates(content.templateTriangles, topLevel);
  renameDuplicates(content.triangleReferences, topLevel);
  for (ztCAD_Structure& structure : content.structures)
    structure.unifyNames();
  for (ztCAD_TmplStructure& structure : content.templateStructures)
    structure.unifyNames();
  for (ztCAD_Detail& detail : content.details)
    unifyNames(detail.content());
  for (ztCAD_TmplDetail& detail : content.templateDetails)
    unifyNames(detail.content());
  return true;
}
