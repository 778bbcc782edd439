// The plain XML reader against the tree that QtXml builds from the same bytes: what it accepts must be
// well-formed, and both must yield the same elements, attributes and texts.

#include "differential/plain_xml_comparison.h"
#include "fuzzing.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const PlainXmlComparison comparison = compareWithTree(fuzzing::bytesOf(data, size));
  fuzzing::require(comparison.differences.isEmpty(),
                   comparison.differences.join(QLatin1Char('\n')).toUtf8().constData());
  return 0;
}
