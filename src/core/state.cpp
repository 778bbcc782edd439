#include "state.h"

#include "vocabulary.h"

namespace {
QString word(const ztCAD_State& state) {
  if (!state.isSet) return ztcad::words().noValue;
  switch (state.code) {
    case 0:
      return QLatin1String("ok");
    case 1:
      return QLatin1String("unknown");
    case 2:
      return QLatin1String("warning");
    case 3:
      return QLatin1String("error");
    default:
      return QLatin1String("unknown value");
  }
}
}  // namespace

QString ztCAD_State::toText() const { return QLatin1String(" state=") + word(*this); }
