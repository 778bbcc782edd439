#pragma once

/// @file
/// The whole interface for hosts in C, and for hosts in C++ built by another compiler than the library:
/// functions that pass only numbers, addresses and zero-terminated text. C11.

#include <ztCAD/version.h>

#include "api/c/contents.h"
#include "api/c/counted_contents.h"
#include "api/c/documents.h"
#include "api/c/element_arrays.h"
#include "api/c/elements.h"
#include "api/c/fields.h"
#include "api/c/library.h"
#include "api/c/names.h"
#include "api/c/records.h"
#include "api/c/reviews.h"
