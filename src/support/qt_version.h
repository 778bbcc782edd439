#pragma once

#include <QtGlobal>

#include <ztCAD/version.h>

/// @file
/// Refuses headers of another Qt than the one that the library was built with. The library's classes have
/// members of Qt's types, whose layout differs between Qt 5 and Qt 6.

#if QT_VERSION_MAJOR != ZTCAD_QT_VERSION_MAJOR
#if ZTCAD_QT_VERSION_MAJOR == 6
#error "this ztCAD was built with Qt 6: its classes need the headers of Qt 6"
#else
#error "this ztCAD was built with Qt 5: its classes need the headers of Qt 5"
#endif
#endif
