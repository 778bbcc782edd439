#pragma once

#include "types.h"

/// @file
/// The fields of an element of any kind, read and set one by one.
///
/// A null element, and one of a kind that lacks the field: there is nothing to get (false, -1, null, an empty text), and
/// nothing is set. Texts are given as in documents.h: into a buffer of `size` bytes, with the length as the result and -1
/// where there is none; a null buffer is fine where only the length is wanted. Numbers likewise: as many as the array has
/// room for are written, the result is how many there are. Texts that are set are UTF-8, else windows-1251; null counts as
/// empty. What is set is copied. No exception comes out.

ZTCAD_C_BEGIN

/// Which kind the element is of: a `ztCAD_ElementKind`, for null `ztCAD_ElementNone`.
ZTCAD_API int32_t ztCAD_getKind(const ztCAD_Base* element);

// -------------------------------------------------------------------------------- what every element has

/// The element's name. Names are kept as they are given until the document is saved or loaded, which makes them unique.
/// @{
ZTCAD_API int64_t ztCAD_getName(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setName(ztCAD_Base* element, const char* name);
/// @}

/// Free text about the element.
/// @{
ZTCAD_API int64_t ztCAD_getComment(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setComment(ztCAD_Base* element, const char* comment);
/// @}

/// A second free text about the element.
/// @{
ZTCAD_API int64_t ztCAD_getInform(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setInform(ztCAD_Base* element, const char* inform);
/// @}

/// The element's colour.
/// @param rgb output, three components; null is fine; not written where the element has no colour
/// @return whether it has one
ZTCAD_API bool ztCAD_getColor(const ztCAD_Base* element, uint32_t* rgb);
/// Sets the element's colour.
/// @param rgb three components, kept as given, nothing is clamped to 255; null takes the colour away
ZTCAD_API void ztCAD_setColor(ztCAD_Base* element, const uint32_t* rgb);

/// Visibility: 1 shown, 0 hidden, -1 unset.
ZTCAD_API int32_t ztCAD_getVisible(const ztCAD_Base* element);
/// Sets or clears the visibility.
/// @param visible positive: shown; 0: hidden; negative: cleared
ZTCAD_API void ztCAD_setVisible(ztCAD_Base* element, int32_t visible);

/// The coordinate system among the element's properties: of a structure its own, of a reference one beside its placement.
/// @param values room for `capacity` reals, null is fine with 0
/// @return the number of its values: twelve, 0 for an empty system, or what a host gave; -1 where there is none
ZTCAD_API int32_t ztCAD_getLCS(const ztCAD_Base* element, double* values, int32_t capacity);
/// Copies a coordinate system into the element's properties.
/// @param lcs null takes it away, but not from a structure, which always has one
ZTCAD_API void ztCAD_setLCS(ztCAD_Base* element, const ztCAD_LCS* lcs);

/// The element as text of one or more lines. Numbers have six significant digits.
/// @param debugForm true: the diagnostic form; false: the storage form, for the kinds that have one
ZTCAD_API int64_t ztCAD_getText(const ztCAD_Base* element, bool debugForm, char* text, int64_t size);

/// Outcome of the element's last read: 1 it succeeded, 0 it failed, -1 it was never read or is a reference.
ZTCAD_API int32_t ztCAD_getReadOk(const ztCAD_Base* element);
/// Sets the outcome of the last read, as the load of a file would. A detail that is built must be marked so to count as
/// sound; other kinds that were never read are judged by what they hold. References and null: nothing happens.
ZTCAD_API void ztCAD_setReadOk(ztCAD_Base* element, bool readOk);
/// Whether the element is sound, as the check of a structure asks. Points, spheres, solids and mass-inertia elements: their
/// last read succeeded or, if they were never read, they are complete. Lines: their lists of vertices are whole triples.
/// Details: the last read succeeded; false if never read. Structures: everything in them is sound. References: always.
ZTCAD_API bool ztCAD_isSound(const ztCAD_Base* element);

// -------------------------------------------------------------------------------- what some kinds have

/// How the element is to be made or shown: one word. Points, lines, solids, spheres and mass-inertia elements.
/// @{
ZTCAD_API int64_t ztCAD_getMethod(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setMethod(ztCAD_Base* element, const char* method);
/// @}

/// Position of a point or centre of a sphere.
/// @param xyz output, three reals in the document's length unit; null is fine; not written where there is none
/// @return whether there is one
ZTCAD_API bool ztCAD_getCenter(const ztCAD_Base* element, double* xyz);
/// Places a point or the centre of a sphere.
/// @param xyz three reals in the document's length unit; null takes the position away
ZTCAD_API void ztCAD_setCenter(ztCAD_Base* element, const double* xyz);

/// Radius of a sphere.
/// @param radius output, not written where there is none; null is fine
/// @return whether there is one
ZTCAD_API bool ztCAD_getRadius(const ztCAD_Base* element, double* radius);
/// Sets the radius of a sphere. The file stores only that there is one.
/// @param radius in the document's length unit; null takes it away
ZTCAD_API void ztCAD_setRadius(ztCAD_Base* element, const double* radius);

/// The element's own list, of a line or of a solid: good until the element goes, or its list is set.
ZTCAD_API const ztCAD_Vertices* ztCAD_getVertices(const ztCAD_Base* element);
/// Copies the list into a line or a solid. Null: nothing happens.
ZTCAD_API void ztCAD_setVertices(ztCAD_Base* element, const ztCAD_Vertices* vertices);
/// The element's own list, of a solid: good until the element goes, or its list is set.
ZTCAD_API const ztCAD_Faces* ztCAD_getFaces(const ztCAD_Base* element);
/// Copies the list into a solid. Null: nothing happens.
ZTCAD_API void ztCAD_setFaces(ztCAD_Base* element, const ztCAD_Faces* faces);

/// Mass-inertia data of a mass-inertia element, a sphere, a solid or a detail.
/// @param values room for `capacity` reals (ten, by custom), null is fine with 0
/// @return the number of values; -1 where there is no data
ZTCAD_API int32_t ztCAD_getMIP(const ztCAD_Base* element, double* values, int32_t capacity);
/// The two integers that travel with the data; 0 and 1 where nobody gave others.
/// @param first  output, not written where there is no data; null is fine
/// @param second likewise
/// @return whether there is data
ZTCAD_API bool ztCAD_getMIPIntegers(const ztCAD_Base* element, int32_t* first, int32_t* second);
/// Sets or clears the mass-inertia data of a mass-inertia element, a sphere, a solid or a detail.
/// @param record copied; one of fewer than ten values changes nothing; null clears the data (a mass-inertia element
///               without data is not written)
ZTCAD_API void ztCAD_setMIP(ztCAD_Base* element, const ztCAD_MIP* record);

/// Where a reference places its template; results as those of `ztCAD_getLCS`.
ZTCAD_API int32_t ztCAD_getPlacement(const ztCAD_Base* element, double* values, int32_t capacity);
/// Places a reference. The placement becomes a model system, whatever it was. Null: nothing happens.
ZTCAD_API void ztCAD_setPlacement(ztCAD_Base* element, const ztCAD_LCS* placement);
/// The name of the template that a reference stands for. Whether there is such a template is not looked up.
/// @{
ZTCAD_API int64_t ztCAD_getTemplateName(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setTemplateName(ztCAD_Base* element, const char* name);
/// @}

/// The file that the template of a reference is in; empty: the document itself.
/// @{
ZTCAD_API int64_t ztCAD_getTemplateFile(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setTemplateFile(ztCAD_Base* element, const char* file);
/// @}

ZTCAD_C_END
