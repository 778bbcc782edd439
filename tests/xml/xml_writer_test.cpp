#include "xml/xml_writer.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <stdexcept>
#include <vector>

#include "xml/byte_sink.h"

using ztcad::ByteOutput;
using ztcad::ByteSink;
using ztcad::Windows1251Encoder;
using ztcad::XmlWriter;

namespace {

constexpr std::size_t pieceSize = 65536;

class Pieces final : public ByteOutput {
 public:
  void write(std::string_view bytes) override { all.emplace_back(bytes); }
  std::string joined() const {
    std::string text;
    for (const std::string& piece : all)
      text += piece;
    return text;
  }
  std::vector<std::string> all;
};

class FullDisk final : public ByteOutput {
 public:
  void write(std::string_view) override { throw std::runtime_error("disk full"); }
};

using Calls = std::function<void(XmlWriter&)>;

std::string written(const Calls& calls, int indent = 3) {
  Pieces pieces;
  const Windows1251Encoder encoder;
  XmlWriter writer(pieces, encoder, indent);
  calls(writer);
  writer.finish();
  return pieces.joined();
}

QString utf8(const char* text) { return QString::fromUtf8(text); }

QString units(std::initializer_list<ushort> codes) {
  QString text;
  for (const ushort code : codes)
    text += QChar(code);
  return text;
}

std::string writtenValue(const QString& value) {
  const std::string line = written([&](XmlWriter& writer) {
    writer.startElement("e");
    writer.attribute("a", value);
    writer.endElement();
  });
  return line.substr(6, line.size() - 6 - 4);  // without <e a=" and "/>\n
}

std::string writtenText(const QString& text) {
  const std::string line = written([&](XmlWriter& writer) {
    writer.startElement("e");
    writer.text(text);
    writer.endElement();
  });
  return line.substr(3, line.size() - 3 - 5);  // without <e> and </e>\n
}

}  // namespace

// ---------------------------------------------------------------------------------------------------- layout

struct LayoutRow {
  const char* name;
  Calls calls;
  const char* expected;
};

void PrintTo(const LayoutRow& row, std::ostream* out) { *out << row.name; }

class XmlLayout : public testing::TestWithParam<LayoutRow> {};

TEST_P(XmlLayout, MatchesQt) { EXPECT_EQ(written(GetParam().calls), GetParam().expected); }

const LayoutRow layoutRows[] = {
    {"Nothing", [](XmlWriter&) {}, ""},
    {"OneElement",
     [](XmlWriter& w) {
       w.startElement("a");
       w.endElement();
     },
     "<a/>\n"},
    {"ElementsInElements",
     [](XmlWriter& w) {
       w.startElement("a");
       w.startElement("b");
       w.startElement("c");
       w.endElement();
       w.endElement();
       w.startElement("d");
       w.endElement();
       w.endElement();
     },
     "<a>\n   <b>\n      <c/>\n   </b>\n   <d/>\n</a>\n"},
    {"TextIsNotIndented",
     [](XmlWriter& w) {
       w.startElement("a");
       w.text("t");
       w.endElement();
     },
     "<a>t</a>\n"},
    {"EmptyTextIsANode",
     [](XmlWriter& w) {
       w.startElement("a");
       w.text("");
       w.endElement();
     },
     "<a></a>\n"},
    {"TextBeforeAnElement",
     [](XmlWriter& w) {
       w.startElement("a");
       w.text("t");
       w.startElement("b");
       w.endElement();
       w.endElement();
     },
     "<a>t<b/>\n</a>\n"},
    {"TextAfterAnElement",
     [](XmlWriter& w) {
       w.startElement("a");
       w.startElement("b");
       w.endElement();
       w.text("t");
       w.endElement();
     },
     "<a>\n   <b/>t</a>\n"},
    {"CdataCountsAsText",
     [](XmlWriter& w) {
       w.startElement("a");
       w.startElement("b");
       w.endElement();
       w.cdata("<&>\"\n");
       w.startElement("b");
       w.endElement();
       w.endElement();
     },
     "<a>\n   <b/><![CDATA[<&>\"\n]]><b/>\n</a>\n"},
    {"CommentsFollowTheSameRules",
     [](XmlWriter& w) {
       w.comment("top");
       w.startElement("a");
       w.comment("<1>");
       w.text("t");
       w.comment("2");
       w.endElement();
     },
     "<!--top-->\n<a>\n   <!--<1>-->t<!--2-->\n</a>\n"},
    {"ATrailingHyphenOfACommentIsFollowedByASpace", [](XmlWriter& w) { w.comment("x-"); }, "<!--x- -->\n"},
    {"ProcessingInstructionsAreNotIndentedAndEndTheLine",
     [](XmlWriter& w) {
       w.processingInstruction("xml", "version=\"1.0\"");
       w.startElement("a");
       w.processingInstruction("p", "");
       w.text("t");
       w.processingInstruction("q", "<d>");
       w.text("t");
       w.endElement();
     },
     "<?xml version=\"1.0\"?>\n<a>\n<?p ?>\nt<?q <d>?>\nt</a>\n"},
    {"EntityReferencesAreNotIndented",
     [](XmlWriter& w) {
       w.startElement("a");
       w.entityReference("x");
       w.startElement("b");
       w.endElement();
       w.entityReference("y");
       w.endElement();
     },
     "<a>\n&x;   <b/>\n&y;</a>\n"},
    {"TheDocumentTypeEndsItsLine",
     [](XmlWriter& w) {
       w.documentType("<!DOCTYPE a>");
       w.startElement("a");
       w.endElement();
     },
     "<!DOCTYPE a>\n<a/>\n"},
    {"PiecesOfPlainTextAreJoined",
     [](XmlWriter& w) {
       w.startElement("a");
       w.plainText("1, ");
       w.plainText("");
       w.plainText("2");
       w.endElement();
     },
     "<a>1, 2</a>\n"},
    {"EmptyPiecesAreNoText",
     [](XmlWriter& w) {
       w.startElement("a");
       w.plainText("");
       w.endElement();
     },
     "<a/>\n"},
};

INSTANTIATE_TEST_SUITE_P(Rows, XmlLayout, testing::ValuesIn(layoutRows),
                         [](const auto& row) { return row.param.name; });

TEST(XmlWriter, IndentsByTheGivenWidth) {
  const Calls nested = [](XmlWriter& w) {
    w.startElement("a");
    w.startElement("b");
    w.endElement();
    w.endElement();
  };
  EXPECT_EQ(written(nested, 0), "<a>\n<b/>\n</a>\n");
  EXPECT_EQ(written(nested, 1), "<a>\n <b/>\n</a>\n");
}

// ------------------------------------------------------------------------------------------------ attributes

TEST(XmlWriter, AttributesAreSortedByName) {
  const std::string line = written([](XmlWriter& w) {
    w.startElement("e");
    for (const char* name : {"b", "a", "\xd1\x8f", "Z", "aa", "_"})
      w.attribute(utf8(name), "");
    w.endElement();
  });
  EXPECT_EQ(line, "<e Z=\"\" _=\"\" a=\"\" aa=\"\" b=\"\" \xff=\"\"/>\n");
}

TEST(XmlWriter, ASecondValueReplacesTheFirst) {
  const std::string line = written([](XmlWriter& w) {
    w.startElement("e");
    w.attribute("b", "1");
    w.attribute("a", "2");
    w.attribute("b", "3");
    w.endElement();
  });
  EXPECT_EQ(line, "<e a=\"2\" b=\"3\"/>\n");
}

TEST(XmlWriter, TheLastOfManyValuesCountsWhateverTheirLengths) {
  const QString longValue(100000, QLatin1Char('x'));
  const std::string text = written([&](XmlWriter& writer) {
    writer.startElement("e");
    writer.attribute("b", longValue);
    writer.attribute("a", "1");
    writer.plainAttribute("b", "2, 3");
    writer.attribute("a", longValue + QLatin1Char('"'));
    writer.plainAttribute("c", "");
    writer.endElement();
  });
  EXPECT_EQ(text, "<e a=\"" + longValue.toStdString() + "&quot;\" b=\"2, 3\" c=\"\"/>\n");
}

TEST(XmlWriter, ManyNamesAreSortedInEachElement) {
  constexpr int count = 1000;
  const auto name = [](int number) { return QLatin1Char('n') + QString::number(10000 + number); };
  const std::string text = written([&](XmlWriter& writer) {
    for (int element = 0; element < 2; ++element) {
      writer.startElement("e");
      for (int i = count; i > 0; --i)
        writer.plainAttribute(name(i + element), "");
      writer.endElement();
    }
  });
  std::string expected;
  for (int element = 0; element < 2; ++element) {
    expected += "<e";
    for (int i = 1; i <= count; ++i)
      expected += ' ' + name(i + element).toStdString() + "=\"\"";
    expected += "/>\n";
  }
  EXPECT_EQ(text, expected);
}

TEST(XmlWriter, EqualNamesOfDifferentStringsAreOne) {
  const std::string text = written([](XmlWriter& writer) {
    writer.startElement(utf8("\xd0\xb0"));
    writer.attribute(utf8("\xd0\xb1"), "1");
    writer.attribute(utf8("\xd0\xb1"), "2");
    writer.endElement();
  });
  EXPECT_EQ(text, "<\xe0 \xe1=\"2\"/>\n");
}

TEST(XmlWriter, AttributesBelongToOneElementOnly) {
  const std::string text = written([](XmlWriter& w) {
    w.startElement("e");
    w.attribute("a", "1");
    w.startElement("f");
    w.endElement();
    w.endElement();
  });
  EXPECT_EQ(text, "<e a=\"1\">\n   <f/>\n</e>\n");
}

// ------------------------------------------------------------------------------------------------ characters

struct CharacterRow {
  const char* name;
  QString text;
  std::string asValue;
  std::string asText;
};

void PrintTo(const CharacterRow& row, std::ostream* out) { *out << row.name; }

class XmlCharacters : public testing::TestWithParam<CharacterRow> {};

TEST_P(XmlCharacters, AreEscapedInValues) { EXPECT_EQ(writtenValue(GetParam().text), GetParam().asValue); }
TEST_P(XmlCharacters, AreEscapedInText) { EXPECT_EQ(writtenText(GetParam().text), GetParam().asText); }

std::vector<CharacterRow> characterRows() {
  return {
      {"Empty", "", "", ""},
      {"Plain", "a b'c", "a b'c", "a b'c"},
      {"Markup", "<a>&amp;", "&lt;a>&amp;amp;", "&lt;a>&amp;amp;"},
      {"Quotes", "\"x\"", "&quot;x&quot;", "\"x\""},
      {"Whitespace", " \t\n\r ", " &#x9;&#xa;&#xd; ", " \t\n&#xd; "},
      {"EndOfCdata", "a]]>b", "a]]&gt;b", "a]]&gt;b"},
      {"BracketsOnly", "]>]]x>]]", "]>]]x>]]", "]>]]x>]]"},
      {"ManyBrackets", "]]]>>", "]]]&gt;>", "]]]&gt;>"},
      {"Controls", units({1, 0x1f, 0x7f}), "\x01\x1f\x7f", "\x01\x1f\x7f"},
      {"Nul", units({'a', 0, 'b'}), "a&#x0;b", "a&#x0;b"},
      {"Cyrillic", utf8("Точка ё №"), "\xd2\xee\xf7\xea\xe0 \xb8 \xb9", "\xd2\xee\xf7\xea\xe0 \xb8 \xb9"},
      {"Byte98", units({0x98}), "\x98", "\x98"},
      {"OutsideTheEncoding", utf8("中é\u0080"), "&#x4e2d;&#xe9;&#x80;", "&#x4e2d;&#xe9;&#x80;"},
      {"AboveSixteenBits", utf8("a😀b"), "a&#x1f600;b", "a&#x1f600;b"},
      {"LastCharacter", utf8("\U0010ffff"), "&#x10ffff;", "&#x10ffff;"},
      {"UnpairedHighSurrogate", units({0xd83d, 'x'}), "&#xd83d;x", "&#xd83d;x"},
      {"HighSurrogateAtTheEnd", units({0xd83d}), "&#xd83d;", "&#xd83d;"},
      {"UnpairedLowSurrogate", units({0xde00, 'x'}), "&#xde00;x", "&#xde00;x"},
      {"SurrogatesInReverseOrder", units({0xde00, 0xd83d}), "&#xde00;&#xd83d;", "&#xde00;&#xd83d;"},
      {"NonCharacters", units({0xfffe, 0xffff}), "&#xfffe;&#xffff;", "&#xfffe;&#xffff;"},
  };
}

INSTANTIATE_TEST_SUITE_P(Rows, XmlCharacters, testing::ValuesIn(characterRows()),
                         [](const auto& row) { return row.param.name; });

TEST(XmlWriter, UnencodableCharactersBecomeQuestionMarksWhereReferencesAreNotAllowed) {
  const std::string text = written([](XmlWriter& w) {
    w.comment(utf8("Я中"));
    w.startElement("a");
    w.cdata(utf8("Я😀") + QChar(0xd800));
    w.endElement();
  });
  EXPECT_EQ(text, "<!--\xdf?-->\n<a><![CDATA[\xdf??]]></a>\n");
}

// ---------------------------------------------------------------------------------------------------- output

TEST(XmlWriter, SmallOutputIsWrittenByFinish) {
  Pieces pieces;
  const Windows1251Encoder encoder;
  XmlWriter writer(pieces, encoder, 3);
  writer.startElement("a");
  writer.endElement();
  EXPECT_TRUE(pieces.all.empty());
  writer.finish();
  EXPECT_EQ(pieces.all, std::vector<std::string>{"<a/>\n"});
}

TEST(XmlWriter, LargeTextsAreWrittenInPieces) {
  const int length = 1000003;
  const std::string plain(length, '1');
  const QString ascii(length, 'x');
  const QString references(length, QChar(0x4e2d));
  Pieces pieces;
  const Windows1251Encoder encoder;
  XmlWriter writer(pieces, encoder, 3);
  writer.startElement("a");
  writer.attribute("ascii", ascii);
  writer.attribute("references", references);
  writer.plainText(plain);
  writer.endElement();
  writer.finish();

  for (const std::string& piece : pieces.all)
    EXPECT_LT(piece.size(), 2 * pieceSize);
  EXPECT_GT(pieces.all.size(), 100u);
  std::string expectedReferences;
  for (int i = 0; i < length; ++i)
    expectedReferences += "&#x4e2d;";
  EXPECT_TRUE(pieces.joined() == "<a ascii=\"" + std::string(length, 'x') + "\" references=\"" +
                                     expectedReferences + "\">" + plain + "</a>\n");
}

TEST(XmlWriter, ManySmallElementsAreWrittenInPieces) {
  Pieces pieces;
  const Windows1251Encoder encoder;
  XmlWriter writer(pieces, encoder, 1);
  writer.startElement("a");
  for (int i = 0; i < 100000; ++i) {
    writer.startElement("b");
    writer.endElement();
  }
  writer.endElement();
  writer.finish();
  for (const std::string& piece : pieces.all)
    EXPECT_LT(piece.size(), 2 * pieceSize);
  EXPECT_EQ(pieces.joined().size(), 4u + 100000 * 6 + 5);
}

TEST(XmlWriter, ExceptionsOfTheOutputReachTheCaller) {
  FullDisk disk;
  const Windows1251Encoder encoder;
  XmlWriter writer(disk, encoder, 3);
  writer.startElement("a");
  writer.endElement();
  EXPECT_THROW(writer.finish(), std::runtime_error);
}

TEST(ByteSink, WritesElementsWithAttributesAndText) {
  const std::string text = written([](XmlWriter& writer) {
    ByteSink sink(writer);
    sink.element("a", [](auto& a) {
      a.attribute("n", utf8("имя"));
      a.element("b", [](auto& b) {
        b.text("1, ");
        b.text("2");
      });
      a.element("c", [](auto& c) { c.text(""); });
    });
  });
  EXPECT_EQ(text, "<a n=\"\xe8\xec\xff\">\n   <b>1, 2</b>\n   <c/>\n</a>\n");
}
