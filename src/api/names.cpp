#include "names.h"

#include <cstring>

#include "../core/name_correction.h"
#include "guard.h"

using ztcad::guarded;

bool doCorrectName(const std::string& name, std::string& corrected, std::string fallback) {
  std::string made;  // not `corrected`, which may be the same object as `name`
  const bool differs = guarded(false, [&] {
    made = ztcad::correctName(name, fallback);
    return made != name;
  });
  corrected.swap(made);
  return differs;
}

bool doCorrectName_nostl(const char* name, char* corrected, const char* fallback) {
  if (!corrected) return false;
  std::string made;
  const bool differs = guarded(false, [&] {
    const std::string given = ztcad::textOf(name);
    made = ztcad::correctName(given, ztcad::textOf(fallback));
    return made != given;
  });
  std::memcpy(corrected, made.c_str(), made.size() + 1);
  return differs;
}

void crtUniqueName(std::string& name) { name.clear(); }

void crtUniqueName_nostl(char* name) {
  if (name) *name = '\0';
}
