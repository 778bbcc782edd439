#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <string>
#include <vector>

#include "api/samples.h"
#include "dice.h"
#include "random_seed.h"

// Saved documents as another parser reads them: the same elements, names, texts and numbers.

namespace {

using XmlDocument = std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)>;

XmlDocument parsedByLibxml(const std::string& bytes) {
  constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  return {xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, options), xmlFreeDoc};
}

std::string toText(xmlChar* owned) {
  const std::unique_ptr<xmlChar, void (*)(void*)> text(owned, xmlFree);
  return text ? reinterpret_cast<const char*>(text.get()) : "(none)";
}

std::string attribute(xmlNodePtr element, const char* name) {
  return toText(xmlGetProp(element, reinterpret_cast<const xmlChar*>(name)));
}

std::vector<xmlNodePtr> children(xmlNodePtr parent, const std::string& tag) {
  std::vector<xmlNodePtr> found;
  for (xmlNodePtr child = parent->children; child; child = child->next)
    if (child->type == XML_ELEMENT_NODE && tag == reinterpret_cast<const char*>(child->name))
      found.push_back(child);
  return found;
}

/// Random texts of all kinds of XML characters.
class Texts {
 public:
  explicit Texts(std::uint64_t seed) : m_dice(seed) {}

  Dice& dice() { return m_dice; }

  QString next() {
    QString text;
    for (int parts = m_dice.roll(12); parts > 0; --parts)
      text += part();
    return m_dice.oneIn(50) ? text.repeated(200) : text;
  }

 private:
  QString part() {
    static const QString fragments[] = {
        "<",  ">",  "&",  "\"", "'",    "]]>", "<!--", "-->", "<![CDATA[", "&amp;", "&#65;", "?>", " ",
        "  ", "\t", "\n", "\r", "\r\n", "%",   "=",    "A",   "point",     "_$1",   "1",     "1e6"};
    switch (m_dice.roll(5)) {
      case 0:
        return m_dice.pick(fragments);
      case 1:
        return QChar(0x20 + m_dice.roll(0x5F));
      case 2:
        return QChar(0xA0 + m_dice.roll(0x460));  // with all letters of windows-1251
      case 3:
        return QChar(0x2000 + m_dice.roll(0xB000));
      default: {
        const char32_t character = 0x10000 + static_cast<uint>(m_dice.roll(0x100000)) % 0xFFFF0;
        return QString::fromUcs4(&character, 1);
      }
    }
  }

  Dice m_dice;
};

/// Compares the descriptive attributes of an element with those in the file.
template <typename Element>
void compareTexts(const Element& element, xmlNodePtr node) {
  const ztCAD_gAttr& texts = element.property().attributes();
  ASSERT_EQ(attribute(node, "name"), texts.name().toStdString());
  ASSERT_EQ(attribute(node, "comment"), texts.comment().toStdString());
  ASSERT_EQ(attribute(node, "inform"), texts.inform().toStdString());
}

template <typename Container>
void compareAll(const Container& elements, const std::vector<xmlNodePtr>& nodes) {
  ASSERT_EQ(elements.size(), nodes.size());
  auto node = nodes.begin();
  for (const auto& element : elements)
    ASSERT_NO_FATAL_FAILURE(compareTexts(element, *node++));
}

void describe(ztCAD_cmnProperty& property, Texts& texts) {
  property.attributes().setName(texts.next());
  property.attributes().setComment(texts.next());
  property.attributes().setInform(texts.next());
}

void compareVertices(const ztCAD_Line& line, xmlNodePtr node) {
  const auto lists = children(node, "vertices");
  ASSERT_EQ(lists.size(), 1U);
  QString expected;
  line.vertices().toText(expected, false);
  ASSERT_EQ(toText(xmlNodeGetContent(lists.front())), expected.toStdString());
}

TEST(SavedXml, IsReadAlikeByAnotherParserForAnyTexts) {
  Texts texts(randomSeed());
  for (int round = 0; round < 200; ++round) {
    const Document document = newDocument(texts.next().toStdString());
    auto* const structure = make<ztCAD_Structure>("S");
    describe(structure->property(), texts);
    for (int i = texts.dice().roll(4); i >= 0; --i) {
      auto* const point = make<ztCAD_Point>("P");
      describe(point->property(), texts);
      ASSERT_FALSE(addPointToDoc(point, document.get()));
      ASSERT_FALSE(addPointToStructure(point, structure));
      auto* const line = make<ztCAD_Line>("L");
      describe(line->property(), texts);
      ASSERT_FALSE(addPolylineToDoc(line, document.get()));
    }
    ASSERT_FALSE(addStructureToDoc(structure, document.get()));

    const XmlDocument parsed = parsedByLibxml(savedBytes(document.get()));
    ASSERT_NE(parsed, nullptr) << "round " << round;
    xmlNode* const root = xmlDocGetRootElement(parsed.get());
    const auto structures = children(root, "structure");
    ASSERT_NO_FATAL_FAILURE(compareAll(*ztCAD_getPoints(document.get()), children(root, "point")));
    ASSERT_NO_FATAL_FAILURE(compareAll(*ztCAD_getLines(document.get()), children(root, "line")));
    ASSERT_NO_FATAL_FAILURE(compareAll(*ztCAD_getStructures(document.get()), structures));
    ASSERT_NO_FATAL_FAILURE(compareAll(ztCAD_getStructures(document.get())->front().content().points,
                                       children(structures.front(), "point")));
    ASSERT_NO_FATAL_FAILURE(
        compareVertices(ztCAD_getLines(document.get())->front(), children(root, "line").front()));
  }
}

struct Character {
  const char* name;
  char32_t code;
  bool libxmlAccepts;
};

void PrintTo(const Character& character, std::ostream* out) { *out << character.name; }

class OddCharacter : public testing::TestWithParam<Character> {};

TEST_P(OddCharacter, SurvivesSavingEvenIfXmlForbidsIt) {
  const char32_t code = GetParam().code;
  const QString name =
      "a" + (code < 0x10000 ? QString(QChar(static_cast<ushort>(code))) : QString::fromUcs4(&code, 1)) + "b";
  const Document document = newDocument();
  auto* const point = make<ztCAD_Point>("P");
  point->setName(name);
  ASSERT_FALSE(addPointToDoc(point, document.get()));
  const std::string bytes = savedBytes(document.get());
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("saved.xml", bytes));
  ASSERT_EQ(loaded.code, 0);
  EXPECT_EQ(ztCAD_getPoints(loaded.document.get())->front().name(), name);
  EXPECT_EQ(parsedByLibxml(bytes) != nullptr, GetParam().libxmlAccepts) << bytes;
}

INSTANTIATE_TEST_SUITE_P(
    SavedXml, OddCharacter,
    testing::Values(Character{"Tab", 9, true}, Character{"LineFeed", 10, true},
                    Character{"CarriageReturn", 13, true}, Character{"Nul", 0, false},
                    Character{"Control1", 1, false}, Character{"VerticalTab", 11, false},
                    Character{"Escape", 27, false}, Character{"Delete", 0x7F, true},
                    Character{"NextLine", 0x85, true}, Character{"UndefinedByteOfWindows1251", 0x98, false},
                    Character{"NoBreakSpace", 0xA0, true}, Character{"LineSeparator", 0x2028, true},
                    Character{"HalfASurrogatePair", 0xD800, false}, Character{"Replacement", 0xFFFD, true},
                    Character{"Fffe", 0xFFFE, false}, Character{"Ffff", 0xFFFF, false},
                    Character{"Emoji", 0x1F600, true}, Character{"LastCharacter", 0x10FFFF, true}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
