// Any bytes as lists of numbers: read from bytes as from characters, and what was read is written and read back.

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

/// Reads bytes that end with their memory and the same bytes in a document.
template <typename Read>
void inBothPlaces(std::string_view bytes, Read read) {
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
  inBothPlaces(bytes, [&](const ztcad::ElementText& element) {
    std::vector<Number> fromBytes;
    require(ztcad::parseTriples(element, fromBytes) == whole, "both ways answer the same");
    // as text, for which one nan is like another
    require(fromBytes.size() == fromCharacters.size() && textOf(fromBytes) == text,
            "both ways read the same");
  });
  inBothPlaces(text, [&text](const ztcad::ElementText& element) {
    std::vector<Number> back;
    require(ztcad::parseTriples(element, back), "what was written is read");
    require(textOf(back) == text, "and written again it is the same");
  });
}

void readShortList(std::string_view bytes, const QString& characters) {
  constexpr int most = 3;
  std::vector<double> list;
  const bool whole = ztcad::parseList(QStringView(characters), list);
  if (!whole || list.size() > most) list.clear();
  inBothPlaces(bytes, [&list](const ztcad::ElementText& element) {
    double values[most] = {};
    const int count = ztcad::parseShortList(element, values, most);
    require(count == static_cast<int>(list.size()), "a short list has as many numbers as a list");
    require(textOf(list) == textOf(std::vector<double>(values, values + count)), "and the same ones");
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
