#include "triple_text.h"

#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../property/property_block.h"

namespace ztcad {

namespace {
char* writeNumber(double value, char* out) { return writeReal(value, out); }
char* writeNumber(std::uint32_t value, char* out) { return writeIndex(value, out); }

template <typename Number>
char* writeThree(const Number* triple, char* out) {
  out = writeNumber(triple[0], out);
  *out++ = ',';
  *out++ = ' ';
  out = writeNumber(triple[1], out);
  *out++ = ',';
  *out++ = ' ';
  out = writeNumber(triple[2], out);
  *out++ = ';';
  return out;
}
}  // namespace

char* writeTriple(const double* triple, char* out) { return writeThree(triple, out); }
char* writeTriple(const std::uint32_t* triple, char* out) { return writeThree(triple, out); }

void beginGeometryText(QString& out, const QString& word, const ztCAD_cmnProperty& property, bool debugForm) {
  out += QLatin1Char('\n') + word + QLatin1Char('(') + words().method + QLatin1Char('=') + words().pointXyz +
         QLatin1String("prop=");
  property.toText(out, debugForm);
}

}  // namespace ztcad
