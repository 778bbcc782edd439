#include "numbered_name.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <system_error>

#include "vocabulary.h"

namespace ztcad {

namespace {

constexpr std::string_view separator = Vocabulary::nameSeparator;

/// 0 for what `textOf` does not append.
unsigned numberOf(std::string_view digits) {
  unsigned number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [next, error] = std::from_chars(digits.data(), end, number);
  const bool isNumber = error == std::errc() && next == end && digits.front() != '0';
  return isNumber ? number : 0;
}

std::optional<NumberedName> numberedNameOf(std::string_view made) {
  const std::size_t at = made.rfind(separator);
  if (at == std::string_view::npos) return std::nullopt;
  const unsigned number = numberOf(made.substr(at + separator.size()));
  if (number == 0) return std::nullopt;
  return NumberedName{ztCAD_ShortText::fromAscii(made.substr(0, at)), number};
}

std::optional<NumberedName> numberedNameOf(const QString& made) {
  const auto at = made.lastIndexOf(QLatin1String(separator.data(), static_cast<int>(separator.size())));
  if (at < 0) return std::nullopt;
  const QByteArray digits = made.mid(at + static_cast<int>(separator.size())).toLatin1();
  const unsigned number = numberOf({digits.constData(), static_cast<std::size_t>(digits.size())});
  if (number == 0) return std::nullopt;
  return NumberedName{ztCAD_ShortText(made.left(at)), number};
}

}  // namespace

ztCAD_ShortText textOf(const ztCAD_ShortText& name, unsigned number) {
  constexpr std::size_t mostDigits = 10;
  char ending[separator.size() + mostDigits];
  char* const digits = std::copy(separator.begin(), separator.end(), ending);
  const char* const end = std::to_chars(digits, std::end(ending), number).ptr;
  const auto length = static_cast<std::size_t>(end - ending);
  if (!name.isShort())
    return ztCAD_ShortText(name.longOne() + QLatin1String(ending, static_cast<int>(length)));
  char made[ztCAD_ShortText::longestShort + sizeof ending];
  const std::string_view bytes = name.bytes();
  std::copy_n(ending, length, std::copy(bytes.begin(), bytes.end(), made));
  return ztCAD_ShortText::fromAscii({made, bytes.size() + length});
}

std::optional<NumberedName> numberedNameOf(const ztCAD_ShortText& made) {
  return made.isShort() ? numberedNameOf(made.bytes()) : numberedNameOf(made.longOne());
}

}  // namespace ztcad
