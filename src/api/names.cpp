#include "names.h"

#include <cstring>

#include "../core/name_correction.h"
#include "guard.h"

using ztcad::guarded;

bool doCorrectName(const std::string& name, std::string& corrected, std::string fallback) {
  return guarded(false, [&] {
    const std::string given = name;  // `corrected` may be the same object
    corrected.clear();
    corrected = ztcad::correctName(given, fallback);
    return corrected != given;
  });
}

bool doCorrectName_nostl(const char* name, char* corrected, const char* fallback) {
  return guarded(false, [&] {
    if (!corrected) return false;
    const std::string given = ztcad::textOf(name);  // `corrected` may be the same buffer
    const std::string instead = ztcad::textOf(fallback);
    *corrected = '\0';
    const std::string made = ztcad::correctName(given, instead);
    std::memcpy(corrected, made.c_str(), made.size() + 1);
    return made != given;
  });
}

void crtUniqueName(std::string& name) { name.clear(); }
