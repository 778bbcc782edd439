#include "unification.h"

#include "../name_counter.h"
#include "document.h"

bool ztcad::unifyNames(ztCAD_DocumentContent& content) {
  NameCounter topLevel;
  renameDuplicates(content.points, topLevel);
  renameDuplicates(content.templatePoints, topLevel);
  return true;
}
