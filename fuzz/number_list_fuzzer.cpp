// Arbitrary bytes as lists of numbers: reading bytes must yield the same as reading characters, and the
// numbers must survive writing and reading back.

#include <cstdint>
#include <QString>
#include <string>
#include <vector>

#include "fuzzing.h"
#include "geometry/triple_text.h"
#include "number/character_list.h"
#include "number/number_list.h"
#include "text/element_text.h"

namespace {

using fuzzing::require;

QString latin1(std::string_view bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}

class Latin1Decoder final : public ztcad::TextDecoder {
 public:
  QString decoded(std::string_view part) const override { return latin1(part); }
};

template <typename Number>
std::string textOf(const std::vector<Number>& numbers) {
  std::string text;
  ztcad::storageText(numbers, [&text](std::string_view piece) { text += piece; });
  return text;
}

/// Calls `read` with the bytes at the end of their memory, and with the same bytes followed by markup, as in
/// a document.
template <typename Read>
void readAtEndAndInside(std::string_view bytes, Read read) {
  const Latin1Decoder decoder;
  read(ztcad::ElementText(bytes, decoder));
  const std::string memory = std::string(bytes) + "<12.5e3, 4>.5e6;7890123456789";
  read(ztcad::ElementText({memory.data(), bytes.size()}, decoder, memory.data() + memory.size()));
}

template <typename Number>
void readTriples(std::string_view bytes, const QString& characters) {
  std::vector<Number> fromCharacters;
  const bool whole = ztcad::parseTriples(QStringView(characters), fromCharacters);
  const std::string text = textOf(fromCharacters);
  readAtEndAndInside(bytes, [&](const ztcad::ElementText& element) {
    std::vector<Number> fromBytes;
    require(ztcad::parseTriples(element, fromBytes) == whole, "bytes and characters yield the same result");
    // compared as text, in which all NaNs are equal
    require(fromBytes.size() == fromCharacters.size() && textOf(fromBytes) == text,
            "bytes and characters yield the same numbers");
  });
  readAtEndAndInside(text, [&text](const ztcad::ElementText& element) {
    std::vector<Number> back;
    require(ztcad::parseTriples(element, back), "a written list can be read");
    require(textOf(back) == text, "a list read back is written the same");
  });
}

void readShortList(std::string_view bytes, const QString& characters) {
  constexpr int capacity = 3;
  std::vector<double> list;
  const bool whole = ztcad::parseList(QStringView(characters), list);
  if (!whole || list.size() > capacity) list.clear();
  readAtEndAndInside(bytes, [&list](const ztcad::ElementText& element) {
    double values[capacity] = {};
    const int count = ztcad::parseShortList(element, values, capacity);
    require(count == static_cast<int>(list.size()), "a short list has as many numbers as a list");
    require(textOf(list) == textOf(std::vector<double>(values, values + count)),
            "a short list has the same numbers as a list");
  });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::bytesOf(data, size);
  const QString characters = latin1(bytes);
  readTriples<double>(bytes, characters);
  readTriples<std::uint32_t>(bytes, characters);
  readShortList(bytes, characters);
  return 0;
}
