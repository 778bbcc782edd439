#pragma once

#include "kinds.h"

/// @file
/// The orders of kinds inside details and structures, which are part of the format. An order that lacks a
/// kind does not compile.

namespace ztcad {

/// The children of a detail in a file; also the order in which names are made unique.
using DetailOrder = KindList<kinds::points, kinds::spheres, kinds::triangles, kinds::lines>;
static_assert(isComplete<ztCAD_DetailContent>(DetailOrder()));

/// The children of a structure in a file: first these, then the nested structures, then the second list.
using StructureFileOrder =
    KindList<kinds::points, kinds::pointReferences, kinds::lines, kinds::lineReferences, kinds::mipElements,
             kinds::mipReferences, kinds::spheres, kinds::triangles, kinds::triangleReferences,
             kinds::details, kinds::detailReferences>;
using StructureFileOrderAfterNested = KindList<kinds::structureReferences>;
static_assert(isComplete<ztCAD_StructureContent>(StructureFileOrder(), StructureFileOrderAfterNested()));

/// The elements of a structure in its text form, after the nested structures; also the order in which names
/// are made unique.
using StructureTextOrder =
    KindList<kinds::structureReferences, kinds::points, kinds::lines, kinds::spheres, kinds::triangles,
             kinds::mipElements, kinds::details, kinds::detailReferences, kinds::pointReferences,
             kinds::lineReferences, kinds::mipReferences, kinds::triangleReferences>;
static_assert(isComplete<ztCAD_StructureContent>(StructureTextOrder()));

}  // namespace ztcad
