#include <gtest/gtest.h>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <QString>
#include <QStringList>
#include <string>
#include <type_traits>
#include <vector>

#include "dice.h"
#include "number/character_list.h"
#include "number/number_list.h"
#include "number/number_text.h"
#include "recorded_answers.h"

// The conversions against the calls of Qt 5.15 that define them. recorded_answers.h describes how a build
// with another Qt is tested.

namespace {

const int inputs = randomRounds(1000000);
const int lists = inputs / 5;  // of about seven numbers each

bool sameBits(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

// Answers for records: the bits of numbers. All NaNs are alike.
void append(std::string& answer, double value) {
  char bits[sizeof value] = "NaN";
  if (!std::isnan(value)) std::memcpy(bits, &value, sizeof value);
  answer.append(bits, sizeof bits);
}
void append(std::string& answer, std::uint32_t value) { answer += std::to_string(value) + ' '; }

template <typename Number>
std::string answerOf(bool result, Number value) {
  std::string answer = result ? "yes" : "no";
  append(answer, value);
  return answer;
}

template <typename Number>
std::string answerOf(bool result, const std::vector<Number>& values) {
  std::string answer = result ? "yes" : "no";
  for (const Number value : values)
    append(answer, value);
  return answer;
}

// --------------------------------------------------------------------------------------------------- writing

double anyBits(Dice& dice) {
  const std::uint64_t bits = dice.bits();
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// k / 2^n: the binary grids that contain the exact ties
double onGrid(Dice& dice) {
  const int numerator = dice.roll(20000001) - 10000000;
  return std::ldexp(static_cast<double>(numerator), -dice.roll(24));
}

// seven decimal digits, the last of them a 5, scaled by a power of ten that a double represents exactly or
// nearly
double sixDigitsAndAFive(Dice& dice) {
  const double digits = (100000 + dice.roll(900000)) * 10.0 + 5;
  const double powers[] = {1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1,
                           1e0,   1e1,   1e2,   1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11};
  const double scaled = digits * dice.pick(powers);
  return dice.roll(2) ? scaled : -scaled;
}

double nextToATie(Dice& dice) {
  const double tie = dice.roll(2) ? sixDigitsAndAFive(dice) : onGrid(dice);
  return std::nextafter(tie, dice.roll(2) ? HUGE_VAL : -HUGE_VAL);
}

double subnormal(Dice& dice) {
  const int shift = 12 + dice.roll(52);
  return static_cast<double>(dice.bits() >> shift) * std::numeric_limits<double>::denorm_min();
}

double special(Dice& dice) {
  using Limits = std::numeric_limits<double>;
  const double values[] = {0.0,
                           -0.0,
                           Limits::infinity(),
                           -Limits::infinity(),
                           Limits::quiet_NaN(),
                           Limits::max(),
                           Limits::lowest(),
                           Limits::min(),
                           Limits::denorm_min(),
                           999999.5,
                           999999.4999999999,
                           9.999995e-5,
                           0.0001,
                           1e5,
                           1e6};
  return dice.pick(values);
}

double anyReal(Dice& dice) {
  switch (dice.roll(8)) {
    case 0:
      return anyBits(dice);
    case 1:
      return onGrid(dice);
    case 2:
      return sixDigitsAndAFive(dice);
    case 3:
      return nextToATie(dice);
    case 4:
      return subnormal(dice);
    case 5:
      return special(dice);
    case 6:
      return (dice.roll(2000000001) - 1000000000) / 1e6;
    default:
      return dice.roll(2000001) - 1000000;
  }
}

TEST(NumberTextDifferential, RealsAreWrittenAsQtWritesThem) {
  checkRandomInputs("written_reals", inputs, [](Dice& dice) {
    const double value = anyReal(dice);
    QString written;
    ztcad::appendReal(written, value);
    if (qtIsTheReference) {
      const QString expected = QString(QLatin1String("%1")).arg(value, 0, 'g', -1, QLatin1Char(' '));
      EXPECT_EQ(written, expected) << std::hexfloat << value;
    }
    return written.toStdString();
  });
}

TEST(NumberTextDifferential, IndicesAreWrittenAsQtWritesThem) {
  checkRandomInputs("written_indices", inputs, [](Dice& dice) {
    const int shift = 32 + dice.roll(32);
    const auto value = static_cast<std::uint32_t>(dice.bits() >> shift);
    QString written;
    ztcad::appendIndex(written, value);
    if (qtIsTheReference) {
      EXPECT_EQ(written, QString(QLatin1String("%1")).arg(value, 0, 10, QLatin1Char(' '))) << value;
    }
    return written.toStdString();
  });
}

// --------------------------------------------------------------------------------------------------- reading

QString digits(Dice& dice, int most) {
  QString text;
  for (int left = dice.roll(most + 1); left > 0; --left)
    text += QLatin1Char(static_cast<char>('0' + dice.roll(10)));
  return text;
}

QString whitespace(Dice& dice) {
  const char16_t kinds[] = {u' ',   u'\t',  u'\n',  u'\v',  u'\f',  u'\r',  0x85,   0xA0,
                            0x1680, 0x180E, 0x2000, 0x2003, 0x200A, 0x200B, 0x2028, 0x2029,
                            0x202F, 0x205F, 0x3000, 0xFEFF, 0x1C,   0x1F};
  QString text;
  for (int left = dice.roll(3) ? 0 : dice.roll(4); left > 0; --left)
    text += dice.roll(2) ? QChar(QLatin1Char(' ')) : QChar(dice.pick(kinds));
  return text;
}

QString sign(Dice& dice) {
  const char16_t kinds[] = {u'+', u'-', 0x2212, 0xFF0B, 0xFF0D, 0x2013};
  return dice.roll(3) ? QString() : QString(QChar(dice.pick(kinds)));
}

QString exponent(Dice& dice) {
  const char16_t kinds[] = {u'e', u'E', u'd', 0x435};
  if (dice.roll(3)) return QString();
  const int most = dice.roll(8) ? 3 : 12;
  QString text(QChar(dice.pick(kinds)));
  text += sign(dice);
  return text += digits(dice, most);
}

QString word(Dice& dice) {
  const char* const words[] = {"nan",   "NaN",   "inf",   "INF",   "infinity", "nan(1)",  "0x10",
                               "0x1p3", "0b1",   "1_000", "1f",    "1L",       "1,000.5", "",
                               "e5",    "1e999", "-0",    "0e999", "2e-324"};
  return QLatin1String(dice.pick(words));
}

// a number composed of its parts, occasionally with many digits
QString decimal(Dice& dice) {
  const int most = dice.roll(50) ? 10 : 900;
  QString text = sign(dice);
  text += digits(dice, most);
  if (dice.roll(2)) {
    text += QLatin1Char(dice.roll(30) ? '.' : ',');
    text += digits(dice, most);
  }
  return text += exponent(dice);
}

// numbers as programs write them
QString printed(Dice& dice) {
  const int precisions[] = {6, 15, 17, 20};
  const auto format = dice.roll(2) ? std::chars_format::general : std::chars_format::scientific;
  const int precision = dice.pick(precisions);
  char text[64];
  const auto end = std::to_chars(std::begin(text), std::end(text), anyReal(dice), format, precision).ptr;
  return QLatin1String(text, static_cast<int>(end - text));
}

QString junk(Dice& dice) {
  const char16_t characters[] = {u'0', u'1', u'2',  u'9',   u'+',   u'-', u'.',   u',',   u';',
                                 u'e', u'E', u'x',  u'X',   u'\'',  u'_', u' ',   u'\t',  u'n',
                                 u'i', 0,    0x660, 0xFF11, 0x2212, 0xB2, 0xD800, 0xDC00, 0xFFFF};
  QString text;
  for (int left = dice.roll(12); left > 0; --left)
    text += QChar(dice.pick(characters));
  return text;
}

QString anyNumberText(Dice& dice) {
  QString text;
  switch (dice.roll(6)) {
    case 0:
      text = junk(dice);
      break;
    case 1:
      text = sign(dice);
      text += word(dice);
      break;
    case 2:
      text = printed(dice);
      break;
    case 3: {
      const int shift = dice.roll(64);
      text = QString::number(static_cast<qulonglong>(dice.bits() >> shift));
      break;
    }
    default:
      text = decimal(dice);
  }
  if (!dice.roll(20)) {
    const int at = dice.roll(static_cast<int>(text.size()) + 1);
    text.insert(at, junk(dice).left(1));
  }
  text.prepend(whitespace(dice));
  return text += whitespace(dice);
}

TEST(NumberTextDifferential, RealsAreReadAsQtReadsThem) {
  int converting = 0;
  const int rounds = checkRandomInputs("read_reals", inputs, [&](Dice& dice) {
    const QString text = anyNumberText(dice);
    double value = 7;
    const bool converts = ztcad::toReal(text, value);
    if (qtIsTheReference) {
      bool convertsByQt = false;
      const double expected = text.toDouble(&convertsByQt);
      EXPECT_EQ(converts, convertsByQt) << text.toStdString();
      EXPECT_TRUE(sameBits(value, convertsByQt ? expected : 7)) << text.toStdString();
    }
    EXPECT_TRUE(sameBits(ztcad::realOrZero(text), converts ? value : 0)) << text.toStdString();
    converting += converts;
    return answerOf(converts, value);
  });
  EXPECT_GT(converting, rounds / 10) << "hardly any text was a number";
  EXPECT_LT(converting, rounds - rounds / 10) << "hardly any text was not a number";
}

TEST(NumberTextDifferential, IndicesAreReadAsQtReadsThem) {
  int converting = 0;
  const int rounds = checkRandomInputs("read_indices", inputs, [&](Dice& dice) {
    const QString text = anyNumberText(dice);
    std::uint32_t value = 7;
    const bool converts = ztcad::toIndex(text, value);
    if (qtIsTheReference) {
      bool convertsByQt = false;
      const uint expected = text.toUInt(&convertsByQt);
      EXPECT_EQ(converts, convertsByQt) << text.toStdString();
      EXPECT_EQ(value, convertsByQt ? expected : 7) << text.toStdString();
    }
    EXPECT_EQ(ztcad::indexOrZero(text), converts ? value : 0) << text.toStdString();
    converting += converts;
    return answerOf(converts, value);
  });
  EXPECT_GT(converting, rounds / 20) << "hardly any text was an index";
  EXPECT_LT(converting, rounds - rounds / 10) << "hardly any text was not a number";
}

// Each UTF-16 unit before, after, around and inside numbers, and twice: 65,536 units in each place.
TEST(NumberTextDifferential, EveryCharacterAroundANumberIsReadAsQtReadsIt) {
  const QString forms[] = {"%1",    "%17",   "7%1",   "%17%1", "7%17",  "%1%17", "7%1%1",
                           "%1nan", "nan%1", "%1inf", "+%17",  "7e%11", "7e1%1", "7.%1",
                           "%1.5",  " %17",  "7%1 ",  "7%1 7", "%1 7",  "-%17"};
  checkEveryUnit("characters_around_numbers", [&forms](int unit) {
    std::string answers;
    for (const QString& form : forms) {
      const QString text = QString(form).replace(QLatin1String("%1"), QString(QChar(unit)));
      double real = 7;
      const bool isReal = ztcad::toReal(text, real);
      std::uint32_t index = 7;
      const bool isIndex = ztcad::toIndex(text, index);
      answers += answerOf(isReal, real) + answerOf(isIndex, index);
      if (!qtIsTheReference) continue;
      bool converts = false;
      const double expectedReal = text.toDouble(&converts);
      EXPECT_EQ(isReal, converts) << form.toStdString() << ", " << std::hex << unit;
      EXPECT_TRUE(sameBits(real, converts ? expectedReal : 7))
          << form.toStdString() << ", " << std::hex << unit;
      const uint expectedIndex = text.toUInt(&converts);
      EXPECT_EQ(isIndex, converts) << form.toStdString() << ", " << std::hex << unit;
      EXPECT_EQ(index, converts ? expectedIndex : 7) << form.toStdString() << ", " << std::hex << unit;
    }
    return answers;
  });
}

// As when a saved document is loaded.
TEST(NumberTextDifferential, WrittenRealsAreReadAsQtReadsThem) {
  checkRandomInputs("written_and_read_reals", inputs, [](Dice& dice) {
    QString text;
    ztcad::appendReal(text, anyReal(dice));
    const double value = ztcad::realOrZero(text);
    if (qtIsTheReference) {
      EXPECT_TRUE(sameBits(value, text.toDouble())) << text.toStdString();
    }
    return answerOf(true, value);
  });
}

// ----------------------------------------------------------------------------------------------------- lists

bool convertByQt(const QString& text, double& value) {
  bool converts = false;
  value = text.toDouble(&converts);
  return converts;
}

bool convertByQt(const QString& text, std::uint32_t& value) {
  bool converts = false;
  value = text.toUInt(&converts, 10);
  return converts;
}

template <typename Number>
bool parseListByQt(QString text, std::vector<Number>& values) {
  if (text.contains(QLatin1Char(';'))) text.remove(QLatin1Char(';'));
  bool whole = true;
  for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    Number value{};
    if (convertByQt(part, value))
      values.push_back(value);
    else
      whole = false;
  }
  return whole;
}

template <typename Number>
bool parseTriplesByQt(const QString& text, std::vector<Number>& values) {
  bool whole = true;
  for (const QString& piece : text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    if (!piece.contains(QLatin1Char(','))) continue;
    std::vector<Number> numbers;
    if (parseListByQt(piece, numbers) && numbers.size() >= 3)
      values.insert(values.end(), numbers.begin(), numbers.begin() + 3);
    else
      whole = false;
  }
  return whole;
}

QString listPart(Dice& dice, bool integers) {
  if (!dice.roll(40)) return anyNumberText(dice);
  if (!dice.roll(40)) return whitespace(dice);
  if (integers) return QLatin1Char(' ') + QString::number(dice.roll(1000));
  QString text(QLatin1Char(' '));
  ztcad::appendReal(text, (dice.roll(2000001) - 1000000) / 1e6);
  return text;
}

QString anyListText(Dice& dice) {
  const char* const separators[] = {",", ",", ",", ", ", ";", ";\n", ",,", ";;", ",;", "; ", ""};
  const bool integers = dice.roll(3) != 0;
  QString text = whitespace(dice);
  for (int left = dice.roll(14); left > 0; --left) {
    const bool endsTriple = left % 3 == 1;
    const char* usual = endsTriple ? ";\n" : ",";
    text += listPart(dice, integers);
    text += QLatin1String(dice.roll(6) ? usual : dice.pick(separators));
  }
  return text;
}

template <typename Number>
bool sameValues(const std::vector<Number>& a, const std::vector<Number>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!sameBits(a[i], b[i])) return false;
  return true;
}

template <typename Number>
class ListDifferential : public testing::Test {};

using NumberTypes = testing::Types<double, std::uint32_t>;
TYPED_TEST_SUITE(ListDifferential, NumberTypes);

TEST(NumberTextDifferential, ListsAreReadAsQtSplitsAndConvertsThem) {
  int whole = 0;
  const int rounds = checkRandomInputs("lists", lists, [&](Dice& dice) {
    const QString text = anyListText(dice);
    std::vector<double> values = {7};
    const bool result = ztcad::parseList(text, values);
    if (qtIsTheReference) {
      std::vector<double> expected = {7};
      EXPECT_EQ(result, parseListByQt(text, expected)) << text.toStdString();
      EXPECT_TRUE(sameValues(values, expected)) << text.toStdString();
    }
    whole += result;
    return answerOf(result, values);
  });
  EXPECT_GT(whole, rounds / 20);
  EXPECT_LT(whole, rounds - rounds / 20);
}

/// Decodes bytes as the plain XML reader does.
class Utf8Decoder final : public ztcad::TextDecoder {
 public:
  QString decoded(std::string_view part) const override {
    // after a letter, a leading byte order mark is decoded as a character
    return QString::fromStdString('x' + std::string(part)).mid(1);
  }
};

/// Bytes at the end of their memory, or followed by markup as in a document, which is longer than what fast
/// paths read at once.
class Bytes {
 public:
  Bytes(const std::string& bytes, bool inDocument)
      : m_memory(inDocument ? bytes + "<12.5e3, 4>.5e6;7890123456789" + std::string(128, '7') : bytes),
        m_size(bytes.size()) {
    m_memory.shrink_to_fit();  // lets the sanitizers detect reads past the end
  }
  ztcad::ElementText text() const {
    return ztcad::ElementText({m_memory.data(), m_size}, m_decoder, m_memory.data() + m_memory.size());
  }

 private:
  std::string m_memory;
  std::size_t m_size;
  Utf8Decoder m_decoder;
};

TYPED_TEST(ListDifferential, TriplesInBytesAreReadAsThoseInCharacters) {
  Dice dice(randomSeed());
  const Utf8Decoder decoder;
  int whole = 0;
  for (int i = 0; i < lists; ++i) {
    const std::string bytes = anyListText(dice).toStdString();
    std::vector<TypeParam> expected = {7}, values = {7};
    const QString characters = decoder.decoded(bytes);
    const bool result =
        qtIsTheReference ? parseTriplesByQt(characters, expected) : ztcad::parseTriples(characters, expected);
    ASSERT_EQ(ztcad::parseTriples(Bytes(bytes, i % 2 == 0).text(), values), result) << bytes;
    ASSERT_TRUE(sameValues(values, expected)) << bytes;
    whole += result;
  }
  EXPECT_GT(whole, lists / 20);
  EXPECT_LT(whole, lists - lists / 20);
}

TEST(ShortListDifferential, BytesAreReadAsCharacters) {
  constexpr int capacity = 3;
  Dice dice(randomSeed());
  const Utf8Decoder decoder;
  int accepted = 0;
  for (int i = 0; i < lists; ++i) {
    QString text = whitespace(dice);
    for (int left = dice.roll(5); left > 0; --left)
      text += listPart(dice, false) + QLatin1String(left > 1 ? "," : dice.roll(2) ? ";" : "");
    const std::string bytes = text.toStdString();
    std::vector<double> expected;
    const QString characters = decoder.decoded(bytes);
    const bool isList =
        qtIsTheReference ? parseListByQt(characters, expected) : ztcad::parseList(characters, expected);
    const bool fits = isList && expected.size() <= capacity;
    double values[capacity] = {};
    const int count = ztcad::parseShortList(Bytes(bytes, i % 2 == 0).text(), values, capacity);
    ASSERT_EQ(count, fits ? static_cast<int>(expected.size()) : 0) << bytes;
    ASSERT_TRUE(sameValues({values, values + count}, fits ? expected : std::vector<double>())) << bytes;
    accepted += count > 0;
  }
  EXPECT_GT(accepted, lists / 4);
  EXPECT_LT(accepted, lists - lists / 10);
}

TYPED_TEST(ListDifferential, TriplesAreReadAsQtSplitsAndConvertsThem) {
  int whole = 0;
  std::size_t triples = 0;
  const char* const record = std::is_same_v<TypeParam, double> ? "triples_of_reals" : "triples_of_indices";
  const int rounds = checkRandomInputs(record, lists, [&](Dice& dice) {
    const QString text = anyListText(dice);
    std::vector<TypeParam> values = {7};
    const bool result = ztcad::parseTriples(text, values);
    if (qtIsTheReference) {
      std::vector<TypeParam> expected = {7};
      EXPECT_EQ(result, parseTriplesByQt(text, expected)) << text.toStdString();
      EXPECT_TRUE(sameValues(values, expected)) << text.toStdString();
    }
    whole += result;
    triples += values.size() / 3;
    return answerOf(result, values);
  });
  EXPECT_GT(whole, rounds / 20);
  EXPECT_LT(whole, rounds - rounds / 20);
  EXPECT_GT(triples, static_cast<std::size_t>(rounds / 2));
}

}  // namespace
