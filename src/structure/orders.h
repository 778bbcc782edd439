#pragma once

#include "kinds.h"

/// @file
/// The orders of the format inside details and structures.

namespace ztcad {

/// A detail's children in a file; names are made unique in this order too.
using DetailOrder = KindList<kinds::points, kinds::spheres, kinds::triangles, kinds::lines>;
static_assert(isComplete<ztCAD_DetailContent>(DetailOrder()));

/// A structure's children in a file. The nested structures come after these, the references to structures last.
using StructureFileOrder =
    KindList<kinds::points, kinds::pointReferences, kinds::lines, kinds::lineReferences, kinds::mipElements,
             kinds::mipReferences, kinds::spheres, kinds::triangles, kinds::triangleReferences,
             kinds::details, kinds::detailReferences>;
using StructureFileOrderAfterNested = KindList<kinds::structureReferences>;
static_assert(isComplete<ztCAD_StructureContent>(StructureFileOrder(), StructureFileOrderAfterNested()));

/// A structure's elements in its text form; names are made unique in this order too. The nested structures come first.
using StructureTextOrder =
    KindList<kinds::structureReferences, kinds::points, kinds::lines, kinds::spheres, kinds::triangles,
             kinds::mipElements, kinds::details, kinds::detailReferences, kinds::pointReferences,
             kinds::lineReferences, kinds::mipReferences, kinds::triangleReferences>;
static_assert(isComplete<ztCAD_StructureContent>(StructureTextOrder()));

}  // namespace ztcad
