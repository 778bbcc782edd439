#pragma once

/// @file
/// The whole interface for C++ hosts built by the compiler of the library: exported functions and the classes
/// that they work on.

#include <ztCAD/version.h>

#include "api/c/reviews.h"
#include "api/contents.h"
#include "api/documents.h"
#include "api/elements.h"
#include "api/library.h"
#include "api/names.h"
#include "api/records.h"
#include "support/assertion_log.h"
