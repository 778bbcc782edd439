#include "triple_text.h"

#include "../core/number_text.h"
#include "../core/vocabulary.h"
#include "../property/property_block.h"

namespace ztcad {

namespace {
void appendNumber(std::string& out, double value) { appendReal(out, value); }
void appendNumber(std::string& out, std::uint32_t value) { appendIndex(out, value); }

template <typename Number>
void appendThree(std::string& out, const Number* triple) {
  appendNumber(out, triple[0]);
  out += ", ";
  appendNumber(out, triple[1]);
  out += ", ";
  appendNumber(out, triple[2]);
  out += ';';
}
}  // namespace

void appendTriple(std::string& out, const double* triple) { appendThree(out, triple); }
void appendTriple(std::string& out, const std::uint32_t* triple) { appendThree(out, triple); }

void beginGeometryText(QString& out, const QString& word, const ztCAD_cmnProperty& property, bool debugForm) {
  out += QLatin1Char('\n') + word + QLatin1Char('(') + words().method + QLatin1Char('=') + words().pointXyz +
         QLatin1String("prop=");
  property.toText(out, debugForm);
}

}  // namespace ztcad
