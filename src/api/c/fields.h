#pragma once

#include "types.h"

/// @file
/// Reads and sets the fields of an element of any kind.
///
/// For a null element, and for a kind without the field, getters return false, -1 or null, and setters do
/// nothing. Texts are returned as in documents.h: written to a buffer of `size` bytes, with the length as the
/// result, -1 if there is no text; the buffer may be null if only the length is wanted. Getters of numbers
/// write as many as the array has room for and return how many there are. Texts to set are UTF-8, else
/// windows-1251; null counts as empty. Setters copy what they are given. No function throws.

ZTCAD_C_BEGIN

/// The kind of the element, a `ztCAD_ElementKind`; `ztCAD_ElementNone` for null.
ZTCAD_API int32_t ztCAD_getKind(const ztCAD_Base* element);

// -------------------------------------------------------------------------------- what every element has

/// The element's name. Names are kept as given until the document is saved or loaded, which makes them
/// unique.
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
/// @param rgb output, three components; may be null; not written if the element has no colour
/// @return whether it has one
ZTCAD_API bool ztCAD_getColor(const ztCAD_Base* element, uint32_t* rgb);
/// Sets the element's colour.
/// @param rgb three components, kept as given and not clamped to 255; null clears the colour
ZTCAD_API void ztCAD_setColor(ztCAD_Base* element, const uint32_t* rgb);

/// Visibility: 1 shown, 0 hidden, -1 unset.
ZTCAD_API int32_t ztCAD_getVisible(const ztCAD_Base* element);
/// Sets or clears the visibility.
/// @param visible positive: shown; 0: hidden; negative: cleared
ZTCAD_API void ztCAD_setVisible(ztCAD_Base* element, int32_t visible);

/// The coordinate system among the element's properties: twelve values, by convention origin, x axis, y axis,
/// z axis in the frame of the holder. The element's own coordinates are in this system. A reference has its
/// placement in addition (`ztCAD_getPlacement`).
/// @param values array of `capacity` reals; may be null if `capacity` is 0
/// @return the number of values: twelve, 0 for an empty system, or as many as a host set; -1 if there is no
///         system
ZTCAD_API int32_t ztCAD_getLCS(const ztCAD_Base* element, double* values, int32_t capacity);
/// Copies a coordinate system into the element's properties.
/// @param lcs null clears it, except that of a structure, which always has one
ZTCAD_API void ztCAD_setLCS(ztCAD_Base* element, const ztCAD_LCS* lcs);

/// The element as text of one or more lines. Numbers have six significant digits.
/// @param debugForm true: the diagnostic form; false: the storage form. Kinds with one form only ignore it
ZTCAD_API int64_t ztCAD_getText(const ztCAD_Base* element, bool debugForm, char* text, int64_t size);

/// Outcome of the element's last read: 1 it succeeded, 0 it failed, -1 it was never read or is a reference.
ZTCAD_API int32_t ztCAD_getReadOk(const ztCAD_Base* element);
/// Sets the outcome of the last read, as loading does. A detail that a host builds is not sound until it is
/// set to true; other kinds that were never read are judged by what they hold. References and null: nothing
/// happens.
ZTCAD_API void ztCAD_setReadOk(ztCAD_Base* element, bool readOk);
/// Whether the element is sound; the check of a structure asks this of everything in it.
/// - Points, spheres, solids, mass-inertia elements: the last read succeeded or, if never read, they are
///   complete.
/// - Lines: the vertices are whole triples.
/// - Details: the last read succeeded; false if never read.
/// - Structures: everything in them is sound.
/// - References: always. Null: never.
ZTCAD_API bool ztCAD_isSound(const ztCAD_Base* element);

// -------------------------------------------------------------------------------- what some kinds have

/// The "method": a word that says how the element is made or shown. Points, lines, solids, spheres,
/// mass-inertia elements. Lines, solids and spheres are always written with the word of their kind. A
/// mass-inertia element of another method than "MIP", which it starts with, is not read back.
/// @{
ZTCAD_API int64_t ztCAD_getMethod(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setMethod(ztCAD_Base* element, const char* method);
/// @}

/// Position of a point or centre of a sphere.
/// @param xyz output, three reals in the document's length unit; may be null; not written if there is no
///            position
/// @return whether there is one
ZTCAD_API bool ztCAD_getCenter(const ztCAD_Base* element, double* xyz);
/// Places a point or the centre of a sphere.
/// @param xyz three reals in the document's length unit; null clears the position
ZTCAD_API void ztCAD_setCenter(ztCAD_Base* element, const double* xyz);

/// Radius of a sphere.
/// @param radius output; may be null; not written if there is no radius
/// @return whether there is one
ZTCAD_API bool ztCAD_getRadius(const ztCAD_Base* element, double* radius);
/// Sets the radius of a sphere. The file stores only whether a radius is set, not its value.
/// @param radius in the document's length unit; null clears it
ZTCAD_API void ztCAD_setRadius(ztCAD_Base* element, const double* radius);

/// The vertices of a line or a solid: the element's own list, valid until the element is destroyed.
ZTCAD_API const ztCAD_Vertices* ztCAD_getVertices(const ztCAD_Base* element);
/// Copies a list of vertices into a line or a solid. Null: nothing happens.
ZTCAD_API void ztCAD_setVertices(ztCAD_Base* element, const ztCAD_Vertices* vertices);
/// The facets of a solid: the element's own list, valid until the element is destroyed.
ZTCAD_API const ztCAD_Faces* ztCAD_getFaces(const ztCAD_Base* element);
/// Copies a list of facets into a solid. Null: nothing happens.
ZTCAD_API void ztCAD_setFaces(ztCAD_Base* element, const ztCAD_Faces* faces);

/// Mass-inertia data of a mass-inertia element, a sphere, a solid or a detail; `crtMIP_nostl` says what the
/// ten values mean.
/// @param values array of `capacity` reals; may be null if `capacity` is 0
/// @return the number of values, at least ten; -1 if there is no data
ZTCAD_API int32_t ztCAD_getMIP(const ztCAD_Base* element, double* values, int32_t capacity);
/// The two integers that are copied with the data; 0 and 1 unless set (`ztCAD_setMIPIntegers`).
/// @param first  output; may be null; not written if there is no data
/// @param second output; may be null; not written if there is no data
/// @return whether there is data
ZTCAD_API bool ztCAD_getMIPIntegers(const ztCAD_Base* element, int32_t* first, int32_t* second);
/// Sets or clears the mass-inertia data of a mass-inertia element, a sphere, a solid or a detail.
/// @param record copied; one of fewer than ten values changes nothing; null clears the data (a mass-inertia
///               element without data is not written)
ZTCAD_API void ztCAD_setMIP(ztCAD_Base* element, const ztCAD_MIP* record);

/// Where a reference places its template, in the frame of the reference's holder; result as of
/// `ztCAD_getLCS`, 0 if no placement was given.
ZTCAD_API int32_t ztCAD_getPlacement(const ztCAD_Base* element, double* values, int32_t capacity);
/// Sets the placement of a reference, which is written as "MCS", also if `placement` is a local system. Null:
/// nothing happens.
ZTCAD_API void ztCAD_setPlacement(ztCAD_Base* element, const ztCAD_LCS* placement);
/// The name of the template that a reference places. The library does not check that such a template exists.
/// @{
ZTCAD_API int64_t ztCAD_getTemplateName(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setTemplateName(ztCAD_Base* element, const char* name);
/// @}

/// The file that contains the template of a reference; empty: the document itself.
/// @{
ZTCAD_API int64_t ztCAD_getTemplateFile(const ztCAD_Base* element, char* text, int64_t size);
ZTCAD_API void ztCAD_setTemplateFile(ztCAD_Base* element, const char* file);
/// @}

ZTCAD_C_END
