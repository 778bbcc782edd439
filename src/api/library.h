#pragma once

#include "../support/_Common/ztParallel.h"
#include "c/library.h"
