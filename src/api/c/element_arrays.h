#pragma once

#include "types.h"

/// @file
/// Many elements by one call: appends them, and reads and sets a field of each. For hosts that work with
/// whole arrays, and for languages in which a call for each element costs more than what it does.
///
/// `elements` is an array of `count` addresses as `ztCAD_list...` and `ztCAD_appendMany...` write it, of any
/// kinds and holders. A null array or a negative count counts as no elements. A null entry, and an element of
/// a kind without the field, has no value when read and is skipped when set. Every array of values has a
/// fixed number of entries for each element, in the order of `elements`. Arrays are read or written during
/// the call and not kept. No function throws.

ZTCAD_C_BEGIN

/// Appends `count` new elements of a kind, each as `ztCAD_appendToDoc` and its siblings do: all, or none if
/// one of them cannot be added or memory runs out.
/// @param elements output, `count` addresses; may be null; not written if nothing was appended
/// @return whether they were appended; false also for a negative count
/// @{
ZTCAD_API bool ztCAD_appendManyToDoc(ztCAD_GMDDocument* document, int32_t kind, int32_t count,
                                     ztCAD_Base** elements);
ZTCAD_API bool ztCAD_appendManyToStructure(ztCAD_commonStructure* structure, int32_t kind, int32_t count,
                                           ztCAD_Base** elements);
ZTCAD_API bool ztCAD_appendManyToDetail(ztCAD_cmnDetail* detail, int32_t kind, int32_t count,
                                        ztCAD_Base** elements);
/// @}

/// Positions of points and centres of spheres.
/// @param xyz     output, `count` * 3 reals; nan where there is none; null: nothing happens
/// @param present output, `count` flags: 1 there is one, 0 there is none; may be null
/// @return how many elements have one
ZTCAD_API int32_t ztCAD_getCenters(const ztCAD_Base* const* elements, int32_t count, double* xyz,
                                   uint8_t* present);
/// @param xyz     `count` * 3 reals; null: nothing happens
/// @param present `count` flags: 0 clears the position; null: none is cleared
/// @return how many elements have the field
ZTCAD_API int32_t ztCAD_setCenters(ztCAD_Base* const* elements, int32_t count, const double* xyz,
                                   const uint8_t* present);

/// Radii of spheres; arguments as for centres, with one real for each element.
/// @{
ZTCAD_API int32_t ztCAD_getRadii(const ztCAD_Base* const* elements, int32_t count, double* radii,
                                 uint8_t* present);
ZTCAD_API int32_t ztCAD_setRadii(ztCAD_Base* const* elements, int32_t count, const double* radii,
                                 const uint8_t* present);
/// @}

/// Colours; arguments as for centres, with three components for each element; 0 where there is no colour.
/// @{
ZTCAD_API int32_t ztCAD_getColors(const ztCAD_Base* const* elements, int32_t count, uint32_t* rgb,
                                  uint8_t* present);
ZTCAD_API int32_t ztCAD_setColors(ztCAD_Base* const* elements, int32_t count, const uint32_t* rgb,
                                  const uint8_t* present);
/// @}

/// Visibilities: 1 shown, 0 hidden, -1 unset. To set: positive shows, 0 hides, negative clears.
/// @param visible `count` entries; null: nothing happens
/// @return how many have one set; how many elements there are, without null entries
/// @{
ZTCAD_API int32_t ztCAD_getVisibilities(const ztCAD_Base* const* elements, int32_t count, int8_t* visible);
ZTCAD_API int32_t ztCAD_setVisibilities(ztCAD_Base* const* elements, int32_t count, const int8_t* visible);
/// @}

/// Coordinate systems (`ztCAD_getLCS`), placements of references (`ztCAD_getPlacement`).
/// @param values output, `count` * 12 reals; nan where there is no system of twelve values; null: nothing
///               happens
/// @param sizes  output, `count` numbers of values, as the functions above return them: twelve, 0 for an
///               empty system, or as many as a host set; -1 for none; may be null
/// @return how many have twelve values
/// @{
ZTCAD_API int32_t ztCAD_getSystems(const ztCAD_Base* const* elements, int32_t count, double* values,
                                   int32_t* sizes);
ZTCAD_API int32_t ztCAD_getPlacements(const ztCAD_Base* const* elements, int32_t count, double* values,
                                      int32_t* sizes);
/// @}
/// Sets systems, as local ones, and placements.
/// @param values `count` * 12 reals; null: nothing happens
/// @param sizes  `count` numbers: 12 sets the values, 0 an empty system, -1 clears the system (not that of a
///               structure and no placement); any other leaves it. Null: all are 12
/// @return how many elements were changed: all up to the first for which there is no memory
/// @{
ZTCAD_API int32_t ztCAD_setSystems(ztCAD_Base* const* elements, int32_t count, const double* values,
                                   const int32_t* sizes);
ZTCAD_API int32_t ztCAD_setPlacements(ztCAD_Base* const* elements, int32_t count, const double* values,
                                      const int32_t* sizes);
/// @}

/// Mass-inertia data (`ztCAD_getMIP`); arguments as for centres, with ten reals for each element. Values
/// after the tenth are left out.
/// @return as for centres; to set: all up to the first for which there is no memory
/// @{
ZTCAD_API int32_t ztCAD_getMIPs(const ztCAD_Base* const* elements, int32_t count, double* values,
                                uint8_t* present);
ZTCAD_API int32_t ztCAD_setMIPs(ztCAD_Base* const* elements, int32_t count, const double* values,
                                const uint8_t* present);
/// @}

/// The fields that are texts.
enum ztCAD_TextField {
  ztCAD_TextName = 0,          ///< `ztCAD_getName`
  ztCAD_TextComment = 1,       ///< `ztCAD_getComment`
  ztCAD_TextInform = 2,        ///< `ztCAD_getInform`
  ztCAD_TextMethod = 3,        ///< `ztCAD_getMethod`
  ztCAD_TextTemplateName = 4,  ///< `ztCAD_getTemplateName`
  ztCAD_TextTemplateFile = 5   ///< `ztCAD_getTemplateFile`
};
/// Texts of many elements, one after the other, without separators and without zeros.
/// @param field a `ztCAD_TextField`
/// @param text  output, UTF-8, `size` bytes; a text that does not fit, and those after it, are not written;
///              may be null
/// @param ends  output, `count` offsets in `text`: where each text ends and the next one begins. An absent
///              text is empty. May be null
/// @return the length of all texts, more than `size` if not all were written; -1 for an unknown field and
///         when memory runs out
ZTCAD_API int64_t ztCAD_getTexts(const ztCAD_Base* const* elements, int32_t count, int32_t field, char* text,
                                 int64_t size, int64_t* ends);
/// @param text UTF-8, else windows-1251, each text by itself; null counts as empty texts
/// @param ends `count` offsets, as above, in ascending order from 0; one that is less than its predecessor
///             gives an empty text. Null: nothing happens
/// @return how many elements were set: all up to the first for which there is no memory; 0 for an unknown
///         field
ZTCAD_API int32_t ztCAD_setTexts(ztCAD_Base* const* elements, int32_t count, int32_t field, const char* text,
                                 const int64_t* ends);

// -------------------------------------------------------------------------------- one list, one call

/// Replaces the vertices of a line or a solid by those of a flat array, without a list in between.
/// @param xyz   `count` * 3 reals, x y z interleaved, in the document's length unit; may be null if `count`
///              is 0. It may be part of the element's own list
/// @return whether they were replaced; false, with nothing changed, for null, for a negative count, for other
///         kinds, and when memory runs out
ZTCAD_API bool ztCAD_setVertexXYZ(ztCAD_Base* element, const double* xyz, int32_t count);
/// Appends vertices to those of a line or a solid; otherwise like `ztCAD_setVertexXYZ`.
ZTCAD_API bool ztCAD_addVertexXYZ(ztCAD_Base* element, const double* xyz, int32_t count);
/// Replaces the facets of a solid.
/// @param ijk `count` * 3 indices, by convention from 0; they are not compared with the vertices
/// @return as for `ztCAD_setVertexXYZ`
ZTCAD_API bool ztCAD_setFacetIJK(ztCAD_Base* element, const uint32_t* ijk, int32_t count);
/// Appends facets to those of a solid; otherwise like `ztCAD_setFacetIJK`.
ZTCAD_API bool ztCAD_addFacetIJK(ztCAD_Base* element, const uint32_t* ijk, int32_t count);

ZTCAD_C_END
