#pragma once

#include "types.h"

/// @file
/// What is in documents, structures and details, counted: for hosts that cannot read the containers of C++.
///
/// A holder has one list for each kind of element (`ztCAD_ElementKind`): a document all of them, a structure all but
/// templates, a detail points, spheres, solids and lines. The structures nested in a structure are its list of
/// `ztCAD_ElementStructure`, template structures among them; `ztCAD_getKind` tells them apart.
///
/// A null holder and a kind that the holder has no list for: the count is 0, no element comes back, nothing is added or
/// removed. Elements stay where they are until they are removed, their document is loaded anew or their holder goes; they
/// belong to their holder. Nested structures do not: one that was read goes when any document is deleted or updated
/// (`ClearGMDDoc`), and is gone from its holder then. No exception comes out.

ZTCAD_C_BEGIN

/// Number of elements of that kind.
/// @param kind a `ztCAD_ElementKind`
/// @return 0 for a null holder and for a kind that it has no list for
/// @{
ZTCAD_API int32_t ztCAD_countInDoc(const ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API int32_t ztCAD_countInStructure(const ztCAD_commonStructure* structure, int32_t kind);
ZTCAD_API int32_t ztCAD_countInDetail(const ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// The element at `index`, from 0, in the order in which they were added; null where there is none. Takes time in
/// proportion to the way from the nearer end: to go through many, list them.
/// @{
ZTCAD_API ztCAD_Base* ztCAD_getFromDoc(ztCAD_GMDDocument* document, int32_t kind, int32_t index);
ZTCAD_API ztCAD_Base* ztCAD_getFromStructure(ztCAD_commonStructure* structure, int32_t kind, int32_t index);
ZTCAD_API ztCAD_Base* ztCAD_getFromDetail(ztCAD_cmnDetail* detail, int32_t kind, int32_t index);
/// @}

/// Writes the addresses of the first elements of that kind into an array.
/// @param elements room for `capacity` pointers; null is fine with 0
/// @return how many there are, which may be more than were written; 0 for a null holder
/// @{
ZTCAD_API int32_t ztCAD_listDoc(ztCAD_GMDDocument* document, int32_t kind, ztCAD_Base** elements,
                                int32_t capacity);
ZTCAD_API int32_t ztCAD_listStructure(ztCAD_commonStructure* structure, int32_t kind, ztCAD_Base** elements,
                                      int32_t capacity);
ZTCAD_API int32_t ztCAD_listDetail(ztCAD_cmnDetail* detail, int32_t kind, ztCAD_Base** elements,
                                   int32_t capacity);
/// @}

/// Appends a copy of an element of any kind to the list of its kind; false means that it was added, as in the `add...`
/// functions of single kinds. To a structure a structure itself is added, not a copy; a template
/// structure there is saved and not read back, as a file knows no templates inside structures. Null: not added.
/// @{
ZTCAD_API bool ztCAD_addToDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document);
ZTCAD_API bool ztCAD_addToStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure);
ZTCAD_API bool ztCAD_addToDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail);
/// @}

/// Appends a new element of that kind, without a name and without content, to be filled where it lies: the way to make
/// details, which no creation function makes. In a structure, `ztCAD_ElementStructure` makes a nested structure, which
/// belongs to the library until it is unloaded.
///
/// What an element needs to read well once it was saved: every element in a structure or detail a name; points and spheres a
/// centre, spheres a radius; lines their vertices, solids vertices and facets; lines, solids, spheres and mass-inertia elements
/// a method; details and mass-inertia elements their data (one of the latter without data is not written at all). A detail is
/// filled where it lies, and nobody counts levels then: what comes to lie deeper than 256 is saved and refused by the load.
/// @return the new element; null when it was not added
/// @{
ZTCAD_API ztCAD_Base* ztCAD_appendToDoc(ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API ztCAD_Base* ztCAD_appendToStructure(ztCAD_commonStructure* structure, int32_t kind);
ZTCAD_API ztCAD_Base* ztCAD_appendToDetail(ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// Removes the element at this address, which need not be one any more; true when it was there. A nested
/// structure is let go and stays whose it was.
/// @{
ZTCAD_API bool ztCAD_removeFromDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API bool ztCAD_removeFromStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure,
                                         int32_t kind);
ZTCAD_API bool ztCAD_removeFromDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// A new structure with copies of everything in `structure`, nested structures included. It belongs to the structures that were
/// made by reading, and ends with `ClearGMDDoc` and with the next document that is deleted or updated.
/// @return null for null and when there is no memory
ZTCAD_API ztCAD_commonStructure* ztCAD_cloneStructure(const ztCAD_commonStructure* structure);
/// Makes the names in a structure unique, then, each level for itself, those in the nested ones, as saving does. Null:
/// nothing happens.
ZTCAD_API void ztCAD_unifyNames(ztCAD_commonStructure* structure);

ZTCAD_C_END
