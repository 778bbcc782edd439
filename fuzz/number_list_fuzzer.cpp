// Any bytes as lists of numbers: read from bytes as from characters, and what was read is written and read back.

#include <cstdint>
#include <QString>
#include <string>
#include <vector>

#include "core/element_text.h"
#include "core/number_text.h"
#include "fuzzing.h"
#include "geometry/triple_text.h"

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

template <typename Number>
void readTriples(std::string_view bytes, const QString& characters) {
  const Latin1Decoder decoder;
  std::vector<Number> fromBytes;
  std::vector<Number> fromCharacters;
  const bool whole = ztcad::parseTriples(ztcad::ElementText(bytes, decoder), fromBytes);
  require(ztcad::parseTriples(QStringView(characters), fromCharacters) == whole, "both ways answer the same");
  // as text, for which one nan is like another
  const std::string text = textOf(fromBytes);
  require(fromBytes.size() == fromCharacters.size() && text == textOf(fromCharacters),
          "both ways read the same");

  std::vector<Number> back;
  require(ztcad::parseTriples(ztcad::ElementText(text, decoder), back), "what was written is read");
  require(textOf(back) == text, "and written again it is the same");
}

void readShortList(std::string_view bytes, const QString& characters) {
  constexpr int most = 3;
  const Latin1Decoder decoder;
  double fromBytes[most] = {};
  const int count = ztcad::parseShortList(ztcad::ElementText(bytes, decoder), fromBytes, most);
  std::vector<double> list;
  const bool whole = ztcad::parseList(QStringView(characters), list);
  const bool isShort = whole && list.size() <= most;
  require(count == (isShort ? static_cast<int>(list.size()) : 0),
          "a short list has as many numbers as a list");
  list.resize(static_cast<std::size_t>(count));
  require(textOf(list) == textOf(std::vector<double>(fromBytes, fromBytes + count)), "and the same ones");
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
