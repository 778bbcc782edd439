#pragma once

#include "../../structure/kinds.h"
#include "document.h"

/// @file
/// The orders of kinds in a document, which are part of the format. An order that lacks a kind does not
/// compile.

namespace ztcad {

static_assert(matchesTable<ztCAD_DocumentContent>(1), "one more: the container of stubs");

/// The children of the root in a file, after the header.
using DocumentFileOrder =
    KindList<kinds::templatePoints, kinds::points, kinds::pointReferences, kinds::templateLines, kinds::lines,
             kinds::lineReferences, kinds::mipElements, kinds::templateMipElements, kinds::mipReferences,
             kinds::spheres, kinds::triangles, kinds::templateTriangles, kinds::triangleReferences,
             kinds::details, kinds::detailReferences, kinds::structureReferences, kinds::structures,
             kinds::templateDetails, kinds::templateStructures>;
static_assert(isComplete<ztCAD_DocumentContent>(DocumentFileOrder()));

/// The elements in the text form, which omits template solids and references to them.
using DocumentTextOrder =
    KindList<kinds::points, kinds::templatePoints, kinds::pointReferences, kinds::lines, kinds::templateLines,
             kinds::lineReferences, kinds::mipElements, kinds::templateMipElements, kinds::mipReferences,
             kinds::structures, kinds::structureReferences, kinds::templateStructures, kinds::spheres,
             kinds::triangles, kinds::details, kinds::detailReferences, kinds::templateDetails>;
using NotInText = KindList<kinds::templateTriangles, kinds::triangleReferences>;
static_assert(isComplete<ztCAD_DocumentContent>(DocumentTextOrder(), NotInText()));

/// The elements whose names are made unique together. Template details and template structures keep theirs:
/// references find them by name.
using UnificationOrder = KindList<kinds::structures, kinds::structureReferences, kinds::points, kinds::lines,
                                  kinds::spheres, kinds::triangles, kinds::mipElements, kinds::details,
                                  kinds::detailReferences, kinds::templatePoints, kinds::pointReferences,
                                  kinds::templateLines, kinds::lineReferences, kinds::templateMipElements,
                                  kinds::mipReferences, kinds::templateTriangles, kinds::triangleReferences>;
using NeverRenamed = KindList<kinds::templateDetails, kinds::templateStructures>;
static_assert(isComplete<ztCAD_DocumentContent>(UnificationOrder(), NeverRenamed()));

}  // namespace ztcad
