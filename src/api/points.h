#pragma once

#include <string>

#include "../core/document/document.h"
#include "../geometry/point.h"
#include "../property/property_record.h"

/// Points and template points.
///
/// What is made here belongs to the library until it is unloaded. Adding stores a copy: the pointer that a creation
/// function returned is not in the document and removes nothing from it; take it from the container instead.
/// Names are kept as they are given, duplicates included, until the document is saved or loaded. A null object:
/// nothing is made and null comes back; insertion answers true (not added), removal false, a getter null. No exception
/// comes out.

extern "C" {

/// @param name       UTF-8, else windows-1251
/// @param nameIsFree output, always true
ZTCAD_API ztCAD_Point* crtPoint(const std::string& name, const ztCAD_Coord* center, bool& nameIsFree);
/// The same with a zero-terminated name; null counts as empty.
ZTCAD_API ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center, bool& nameIsFree);
/// A template with the position and the properties of `source` (a point or a template point), under a new name.
ZTCAD_API ztCAD_TmplPoint* crtTmplPoint(const std::string& name, const ztCAD_commonPoint* source,
                                        bool& nameIsFree);

/// Appends a copy. False means that it was added.
ZTCAD_API bool addPointToDoc(const ztCAD_Point* point, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplPointToDoc(const ztCAD_TmplPoint* point, ztCAD_GMDDocument* document);

/// Removes the point at this address from the document; true when it was there.
ZTCAD_API bool removePointFromDoc(const ztCAD_Point* point, ztCAD_GMDDocument* document);

/// The document's own container; it lives as long as the document, loading replaces what is in it.
ZTCAD_API ztCAD_Cont<ztCAD_Point>* ztCAD_getPoints(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplPoint>* ztCAD_getTmplPoints(ztCAD_GMDDocument* document);

/// Reads a point's position. A null point: the outputs stay as they are. A point without a position is a fatal error
/// that ends the program with a message naming the point: there is no value that could be given for it.
ZTCAD_API void getPointCoord(const ztCAD_Point* point, double& x, double& y, double& z);
}

/// Replaces comment, inform, colour and visibility of the point, and its coordinate system where the record has one.
/// The name stays. Null: nothing happens.
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Point* point);
