#pragma once

#include "types.h"

/// @file
/// Access by index and kind to the elements of documents, structures and details, for hosts that cannot use
/// the C++ containers.
///
/// A holder has one list for each kind of element (`ztCAD_ElementKind`): a document has all of them, a
/// structure all except templates, a detail points, spheres, solids and lines. The list of
/// `ztCAD_ElementStructure` of a structure contains the structures nested in it, template structures
/// included; `ztCAD_getKind` distinguishes them.
///
/// With a null holder, or a kind that the holder has no list for, the count is 0, no element is returned, and
/// nothing is added or removed. An element belongs to its holder and keeps its address until it is removed,
/// its document is loaded again, or its holder is destroyed.
///
/// Nested structures are held, not owned. One that was read belongs to its document if that was loaded by
/// `ztCAD_loadDocument...` or `ztCAD_reloadDocument`; otherwise the next `ClearGMDDoc`, `UpdateGMDDoc` or
/// `DeleteGMDDoc` destroys it, whatever document that call is for. A destroyed structure disappears from
/// every holder.
///
/// No function throws.

ZTCAD_C_BEGIN

/// Number of elements of that kind.
/// @param kind a `ztCAD_ElementKind`
/// @return 0 for a null holder and for a kind that the holder has no list for
/// @{
ZTCAD_API int32_t ztCAD_countInDoc(const ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API int32_t ztCAD_countInStructure(const ztCAD_commonStructure* structure, int32_t kind);
ZTCAD_API int32_t ztCAD_countInDetail(const ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// The element at `index`, from 0, in the order of addition; null if there is none. Takes time in proportion
/// to the distance from the nearer end of the list: to visit many elements, use `ztCAD_list...`.
/// @{
ZTCAD_API ztCAD_Base* ztCAD_getFromDoc(ztCAD_GMDDocument* document, int32_t kind, int32_t index);
ZTCAD_API ztCAD_Base* ztCAD_getFromStructure(ztCAD_commonStructure* structure, int32_t kind, int32_t index);
ZTCAD_API ztCAD_Base* ztCAD_getFromDetail(ztCAD_cmnDetail* detail, int32_t kind, int32_t index);
/// @}

/// Writes the addresses of the first elements of that kind into an array.
/// @param elements array of `capacity` pointers; may be null if `capacity` is 0
/// @return how many elements there are, which may be more than were written; 0 for a null holder
/// @{
ZTCAD_API int32_t ztCAD_listDoc(ztCAD_GMDDocument* document, int32_t kind, ztCAD_Base** elements,
                                int32_t capacity);
ZTCAD_API int32_t ztCAD_listStructure(ztCAD_commonStructure* structure, int32_t kind, ztCAD_Base** elements,
                                      int32_t capacity);
ZTCAD_API int32_t ztCAD_listDetail(ztCAD_cmnDetail* detail, int32_t kind, ztCAD_Base** elements,
                                   int32_t capacity);
/// @}

/// Appends a copy of an element of any kind to the list of its kind. A structure added to a structure is held
/// itself, not copied. A template structure in a structure is saved but not read back: files have no
/// templates inside structures.
/// @return false: added, as in the `add...` functions of single kinds; true for null, for a kind that the
///         holder has no list for, and when the element would be nested deeper than a file may nest it
/// @{
ZTCAD_API bool ztCAD_addToDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document);
ZTCAD_API bool ztCAD_addToStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure);
ZTCAD_API bool ztCAD_addToDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail);
/// @}

/// Appends a new element of that kind, without name and content, to be filled in place. This is the only way
/// to make details, which no creation function makes. In a structure, `ztCAD_ElementStructure` makes a nested
/// structure, which belongs to the library until it is unloaded.
///
/// Without the following, a saved element is lost or fails to read when the file is loaded:
/// - points and spheres: a centre;
/// - details: mass-inertia data;
/// - mass-inertia elements: data, without which they are not written, and the method "MIP", which they start
///   with;
/// - nested structures: a name.
///
/// Everything else may be left empty: names of other elements, lists of vertices and facets, and the methods
/// of lines, solids and spheres, which are written as the format requires. Soundness (`ztCAD_isSound`) asks
/// for more: a radius of a sphere, and for a detail that was built `ztCAD_setReadOk`.
///
/// The depth is checked when elements are added and structures nested, not when a detail is filled: details
/// filled later can make a document deeper than 256 levels, which a save refuses.
/// @return the new element; null if it was not added
/// @{
ZTCAD_API ztCAD_Base* ztCAD_appendToDoc(ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API ztCAD_Base* ztCAD_appendToStructure(ztCAD_commonStructure* structure, int32_t kind);
ZTCAD_API ztCAD_Base* ztCAD_appendToDetail(ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// Removes the element at this address and destroys it. A nested structure is released and keeps its owner.
/// @param element only compared: the object may no longer exist
/// @return whether it was there
/// @{
ZTCAD_API bool ztCAD_removeFromDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document, int32_t kind);
ZTCAD_API bool ztCAD_removeFromStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure,
                                         int32_t kind);
ZTCAD_API bool ztCAD_removeFromDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail, int32_t kind);
/// @}

/// A new structure with copies of everything in `structure`, nested structures included. It belongs to the
/// list of structures that all documents share: the next `ClearGMDDoc`, `UpdateGMDDoc` or `DeleteGMDDoc`
/// destroys it.
/// @return null for null and when memory runs out
ZTCAD_API ztCAD_commonStructure* ztCAD_cloneStructure(const ztCAD_commonStructure* structure);
/// Makes the names in a structure unique, then those in each nested structure, each level separately, as
/// saving does. Null: nothing happens.
ZTCAD_API void ztCAD_unifyNames(ztCAD_commonStructure* structure);

ZTCAD_C_END
