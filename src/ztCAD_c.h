#pragma once

/// @file
/// Everything that a host in C needs, and a host in C++ that was built by another compiler than the library: functions
/// that take and give numbers, addresses and zero-terminated text, and nothing else. C11.

#include <ztCAD/version.h>

#include "api/c/contents.h"
#include "api/c/counted_contents.h"
#include "api/c/documents.h"
#include "api/c/elements.h"
#include "api/c/fields.h"
#include "api/c/library.h"
#include "api/c/names.h"
#include "api/c/records.h"
