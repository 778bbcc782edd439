#include "text/narrow_text.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "recorded_answers.h"
#include "text/append_character.h"
#include "text/windows1251.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

namespace {

using namespace std::string_literals;
using ztcad::NarrowEncoding;

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

bool isUtf8AccordingToQt(const std::string& bytes) {
  QTextCodec::ConverterState state;
  QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(), static_cast<int>(bytes.size()), &state);
  return state.invalidChars == 0 && state.remainingChars == 0;
}

QString fromWindows1251ByQt(char byte) {
  return QTextCodec::codecForName("windows-1251")->toUnicode(&byte, 1);
}

/// The byte of a character in windows-1251; nothing if Qt cannot encode it.
std::string toWindows1251ByQt(int character) {
  const QChar text(character);
  QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
  const QByteArray byte = QTextCodec::codecForName("windows-1251")->fromUnicode(&text, 1, &state);
  const bool encodable = state.invalidChars == 0 && state.remainingChars == 0 && !text.isSurrogate();
  return encodable ? byte.toStdString() : std::string();
}

#else

// Never asked.
bool isUtf8AccordingToQt(const std::string& /*bytes*/) { return false; }
QString fromWindows1251ByQt(char /*byte*/) { return {}; }
std::string toWindows1251ByQt(int /*character*/) { return {}; }

#endif

struct Row {
  const char* name;
  std::string bytes;
  bool valid;
};

const Row rows[] = {
    {"empty", "", true},
    {"ASCII", "Part 1", true},
    {"NUL", "\0"s, true},
    {"two bytes, first", "\xC2\x80", true},
    {"two bytes, last", "\xDF\xBF", true},
    {"three bytes, first", "\xE0\xA0\x80", true},
    {"last before surrogates", "\xED\x9F\xBF", true},
    {"first after surrogates", "\xEE\x80\x80", true},
    {"noncharacter", "\xEF\xBF\xBF", true},
    {"byte order mark", "\xEF\xBB\xBF", true},
    {"four bytes, first", "\xF0\x90\x80\x80", true},
    {"four bytes, last", "\xF4\x8F\xBF\xBF", true},
    {"lone continuation", "\x80", false},
    {"overlong NUL", "\xC0\x80", false},
    {"overlong ASCII", "\xC1\xBF", false},
    {"overlong three bytes", "\xE0\x9F\xBF", false},
    {"overlong four bytes", "\xF0\x8F\xBF\xBF", false},
    {"first surrogate", "\xED\xA0\x80", false},
    {"last surrogate", "\xED\xBF\xBF", false},
    {"surrogate pair", "\xED\xA0\xBD\xED\xB8\x80", false},
    {"above U+10FFFF", "\xF4\x90\x80\x80", false},
    {"five bytes", "\xF8\x88\x80\x80\x80", false},
    {"FF", "\xFF", false},
    {"two bytes, truncated", "a\xC3", false},
    {"three bytes, truncated", "\xE2\x82", false},
    {"four bytes, truncated", "\xF0\x9F\x98", false},
    {"three bytes, third is ASCII", "\xE2\x82 ", false},
    {"four bytes, fourth is a lead byte", "\xF0\x9F\x98\xC3", false},
    {"valid, then truncated", "\xD0\x94\xD0", false},
    {"continuation after a complete sequence", "\xD0\x94\x80", false},
    {"windows-1251 word", "\xC4\xE5\xF2\xE0\xEB\xFC", false},
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class Bytes : public testing::TestWithParam<Row> {};

TEST_P(Bytes, AreUtf8IfAndOnlyIfWellFormed) {
  EXPECT_EQ(ztcad::isUtf8(GetParam().bytes), GetParam().valid);
  EXPECT_EQ(ztcad::narrowEncodingOf(GetParam().bytes),
            GetParam().valid ? NarrowEncoding::Utf8 : NarrowEncoding::Windows1251);
}

TEST_P(Bytes, SurviveARoundTrip) {
  const std::string& bytes = GetParam().bytes;
  EXPECT_EQ(ztcad::toNarrow(ztcad::fromNarrow(bytes), ztcad::narrowEncodingOf(bytes)), bytes);
}

INSTANTIATE_TEST_SUITE_P(NarrowText, Bytes, testing::ValuesIn(rows));

TEST(NarrowText, ValidatesUtf8AsQtDoes) {
  const unsigned char edges[] = {0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
                                 0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
  RecordedAnswers recorded("valid_utf8");
  for (const unsigned char first : edges) {
    std::string answers;
    for (const unsigned char second : edges)
      for (const unsigned char third : edges)
        for (const unsigned char fourth : edges) {
          std::string bytes;
          for (const unsigned char byte : {first, second, third, fourth})
            bytes += static_cast<char>(byte);
          const bool isValid = ztcad::isUtf8(bytes);
          if (qtIsTheReference) {
            ASSERT_EQ(isValid, isUtf8AccordingToQt(bytes)) << testing::PrintToString(bytes);
          }
          answers += isValid ? 'y' : 'n';
        }
    recorded.expect(numbered("first byte", first), sumOf(answers));
  }
  recorded.finish();
}

TEST(NarrowText, EveryCharacterSurvivesARoundTrip) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (QChar::isSurrogate(character)) continue;
    const QString text = QString::fromUcs4(&character, 1);
    const std::string bytes = ztcad::toNarrow(text);
    ASSERT_TRUE(ztcad::isUtf8(bytes)) << character;
    ASSERT_EQ(ztcad::fromNarrow(bytes), text) << character;
  }
}

TEST(NarrowText, LeadingByteOrderMarksAreKept) {
  const QString mark = QChar(0xFEFF);
  const QString name = QLatin1String("name");
  EXPECT_EQ(ztcad::fromNarrow("\xEF\xBB\xBF"), mark);
  EXPECT_EQ(ztcad::fromNarrow("\xEF\xBB\xBFname"), mark + name);
  EXPECT_EQ(ztcad::fromNarrow("\xEF\xBB\xBF\xEF\xBB\xBFname"), mark + mark + name);
  EXPECT_EQ(ztcad::fromNarrow("name\xEF\xBB\xBF"), name + mark);
}

TEST(NarrowText, NulIsAnOrdinaryCharacter) {
  EXPECT_EQ(ztcad::fromNarrow("a\0b"s), QString(QLatin1String("a") + QChar(0) + QLatin1String("b")));
  EXPECT_EQ(ztcad::fromNarrow("\0\xD0\x94"s), QString(QChar(0)) + QChar(0x414));
  EXPECT_EQ(ztcad::fromNarrow("\0\xC4"s), QString(QChar(0)) + QChar(0x414));
  EXPECT_EQ(ztcad::toNarrow(QString(QChar(0))), "\0"s);
}

TEST(NarrowText, TheFirstCharacterIsDecodedAsTheWholeText) {
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    std::string text;
    ztcad::appendUtf8(code, text);
    text += "\xD0\x94";
    const auto [decoded, length] = ztcad::firstCharacter(text, NarrowEncoding::Utf8);
    ASSERT_EQ(decoded, code);
    ASSERT_EQ(length, text.size() - 2) << std::hex << code;
  }
  for (int byte = 0; byte < 256; ++byte) {
    const char text[] = {static_cast<char>(byte), 'a'};
    const auto [decoded, length] =
        ztcad::firstCharacter(std::string_view(text, 2), NarrowEncoding::Windows1251);
    EXPECT_EQ(decoded, ztcad::windows1251ToUnicode(static_cast<unsigned char>(byte)).unicode());
    EXPECT_EQ(length, 1u);
  }
}

TEST(NarrowText, EmptyTextStaysEmptyInBothDirections) {
  EXPECT_TRUE(ztcad::fromNarrow("").isEmpty());
  EXPECT_TRUE(ztcad::fromNarrow({}).isEmpty());
  EXPECT_EQ(ztcad::toNarrow(QString()), "");
  EXPECT_EQ(ztcad::toNarrow(QString(), NarrowEncoding::Windows1251), "");
}

// one invalid sequence makes the whole text windows-1251, including its valid UTF-8 sequences
TEST(NarrowText, AWholeTextHasOneEncoding) {
  EXPECT_EQ(ztcad::fromNarrow("\xD0\x94 \xC4").toStdString(), "Р” Д");
}

TEST(NarrowText, UnpairedSurrogatesBecomeQuestionMarks) {
  for (const int surrogate : {0xD800, 0xDBFF, 0xDC00, 0xDFFF}) {
    const QString text = QLatin1String("a") + QChar(surrogate) + QLatin1String("b");
    EXPECT_EQ(ztcad::toNarrow(text), "a?b");
    EXPECT_EQ(ztcad::toNarrow(text, NarrowEncoding::Windows1251), "a?b");
  }
}

TEST(NarrowText, EachCharacterWithoutAWindows1251ByteBecomesAQuestionMark) {
  EXPECT_EQ(ztcad::toNarrow(QString::fromUtf8("Д零😀ж"), NarrowEncoding::Windows1251), "\xC4??\xE6");
}

TEST(NarrowText, FileNamesAreUtf8OrElseInTheSystemEncoding) {
  EXPECT_EQ(ztcad::fileNameFromNarrow("a.xml"), QLatin1String("a.xml"));
  EXPECT_EQ(ztcad::fileNameFromNarrow("Деталь.xml").toStdString(), "Деталь.xml");
  EXPECT_EQ(ztcad::fileNameFromNarrow("\xC4.xml"), QString::fromLocal8Bit("\xC4.xml"));
}

// Unassigned in the code page: a Qt built with ICU decodes it as U+0098, a Qt without ICU as no character.
constexpr int unassignedByte = 0x98;

TEST(Windows1251, DecodesEveryByteAsQtDoes) {
  RecordedAnswers recorded("windows1251");
  for (int byte = 0; byte < 256; ++byte) {
    const QString character = ztcad::windows1251ToUnicode(static_cast<unsigned char>(byte));
    if (qtIsTheReference && byte != unassignedByte) {
      EXPECT_EQ(character, fromWindows1251ByQt(static_cast<char>(byte))) << byte;
    }
    recorded.expect(numbered("byte", byte), QString::number(character[0].unicode(), 16).toStdString());
  }
  recorded.finish();
}

// Long texts are encoded in pieces, which must not cut a surrogate pair.
TEST(NarrowText, LongTextsAreEncodedAsShortOnesAre) {
  const QString unpaired(QChar(0xd83d));
  for (const QString& unit :
       {QString::fromUtf8("😀"), QString::fromUtf8("aЖ中"), unpaired, unpaired + QLatin1Char('a')})
    for (const QString& start : {QString(), QString(QLatin1Char('a'))}) {
      const QString text = start + unit.repeated(150000);
      EXPECT_EQ(ztcad::toNarrow(text), text.toUtf8().toStdString());
    }
}

TEST(Windows1251, TheUnassignedByteMapsToTheControlCharacterOfTheSameNumber) {
  EXPECT_EQ(ztcad::windows1251ToUnicode(unassignedByte), QChar(unassignedByte));
  EXPECT_EQ(ztcad::windows1251FromUnicode(unassignedByte), unassignedByte);
}

TEST(Windows1251, EveryByteSurvivesARoundTrip) {
  for (int byte = 0; byte < 256; ++byte) {
    const QChar character = ztcad::windows1251ToUnicode(static_cast<unsigned char>(byte));
    EXPECT_EQ(ztcad::windows1251FromUnicode(character.unicode()), byte);
  }
}

TEST(Windows1251, EncodesExactlyTheCharactersThatQtCanEncode) {
  checkEveryUnit("to_windows1251", [](int character) {
    const auto byte = ztcad::windows1251FromUnicode(static_cast<char32_t>(character));
    const std::string encoded = byte ? std::string(1, static_cast<char>(*byte)) : std::string();
    if (qtIsTheReference && character != unassignedByte) {
      EXPECT_EQ(encoded, toWindows1251ByQt(character)) << character;
    }
    return encoded;
  });
}

TEST(Windows1251, EncodesNothingAboveTheBasicMultilingualPlane) {
  for (const char32_t character : {U'\U00010000', U'\U00010041', U'\U00010414', U'\U0001F600', U'\U0010FFFF'})
    EXPECT_FALSE(ztcad::windows1251FromUnicode(character));
}

}  // namespace
