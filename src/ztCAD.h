#pragma once

/// Everything that a host needs: the exported functions and the classes that they work on.

#include "api/documents.h"
#include "api/library.h"
#include "api/names.h"
#include "api/points.h"
#include "api/records.h"
#include "support/assertion_log.h"
