#include <gtest/gtest.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <QDomDocument>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dice.h"
#include "mutated_xml.h"
#include "random_seed.h"
#include "xml/dom_backend.h"
#include "xml/plain_xml.h"
#include "xml/read_observer.h"
#include "xml/tree_of_xml.h"
#include "xml/xml_view.h"

// Series of elements that nearly equal each other: the plain reader compares a start tag with the one before
// it instead of parsing it. What it returns is compared with a tree and with the general reader.

namespace {

using ztcad::ElementView;

// ---------------------------------------------------------------------------------------------------- series

struct Attribute {
  std::string name;
  std::string value;  // as written
  char quote = '"';
  std::string before = " ";
};

struct Element {
  std::string tag;
  std::vector<Attribute> attributes;
  std::string beforeEnd;
  std::string content;  // empty: an empty-element tag
};

const char* const tags[] = {"p", "p", "pp", "q", "p1", "point"};
const char* const names[] = {"a", "b", "aa", "ab", "name", "nane", "name2", "thickness", "thicknest"};

std::string anyValue(Dice& dice) {
  const char* const values[] = {"",
                                "1",
                                "12",
                                "1, 2, 3",
                                "0123456789abcde",
                                "0123456789abcdef",
                                "0123456789abcdef0123456789abcdef",
                                "0123456789abcdef0123456789abcdeF",
                                "&amp;",
                                "&amp;amp;",
                                "&lt;0123456789abcdef",
                                "0123456789abcdef&gt;",
                                "0123456789abcdef&#65;",
                                "0123456789abcdef&#651;",
                                "&#x42f;&quot;&apos;",
                                "\xD0\xAF",
                                "\xD0\xAF\xD0\xB6",
                                "0123456789abcde\xD0\xAF",
                                "/>",
                                "a=",
                                " ",
                                "->"};
  return dice.pick(values);
}

Attribute anyAttribute(Dice& dice) {
  Attribute attribute;
  attribute.name = dice.pick(names);
  attribute.value = anyValue(dice);
  return attribute;
}

Element anyElement(Dice& dice) {
  Element element;
  element.tag = dice.pick(tags);
  for (int left = dice.roll(5); left > 0; --left)
    element.attributes.push_back(anyAttribute(dice));
  return element;
}

/// Another start tag with the same number of attributes or nearly so.
void changeOne(Element& element, Dice& dice) {
  const char* const whitespace[] = {" ", " ", "  ", "\n", "\t "};
  auto& attributes = element.attributes;
  const auto place = [&] { return static_cast<std::size_t>(dice.roll(static_cast<int>(attributes.size()))); };
  const int kind = dice.roll(12);
  if (kind == 0) {
    element.tag = dice.pick(tags);
  } else if (kind == 1) {
    element.beforeEnd = dice.oneIn(2) ? "" : dice.pick(whitespace);
  } else if (kind == 2) {
    const char* const contents[] = {"",           "<p/>",    "<p a=\"1\" b=\"2\"/><p a=\"1\" b=\"3\"/>",
                                    "<!-- c -->", "<?d e?>", " "};
    element.content = dice.pick(contents);
  } else if (kind == 3) {
    const std::size_t at = attributes.empty() ? 0 : place();
    attributes.insert(attributes.begin() + static_cast<std::ptrdiff_t>(at), anyAttribute(dice));
  } else if (attributes.empty()) {
    return;
  } else if (kind == 4) {
    attributes.erase(attributes.begin() + static_cast<std::ptrdiff_t>(place()));
  } else if (kind == 5) {
    std::swap(attributes[place()], attributes[place()]);
  } else if (kind == 6) {
    attributes[place()].before = dice.pick(whitespace);
  } else if (kind == 7) {
    Attribute& attribute = attributes[place()];
    attribute.quote = attribute.quote == '"' ? '\'' : '"';
  } else if (kind == 8) {
    attributes[place()].name = dice.pick(names);
  } else {
    Attribute& attribute = attributes[place()];
    attribute.value = dice.oneIn(3) ? attribute.value + anyValue(dice) : anyValue(dice);
  }
}

std::string textOf(const Element& element) {
  std::string text = '<' + element.tag;
  for (const Attribute& attribute : element.attributes)
    text += attribute.before + attribute.name + '=' + attribute.quote + attribute.value + attribute.quote;
  text += element.beforeEnd;
  return text + (element.content.empty() ? "/>" : '>' + element.content + "</" + element.tag + '>');
}

std::string anySeries(Dice& dice) {
  std::string text = "<r>";
  Element element = anyElement(dice);
  for (int left = 2 + dice.roll(12); left > 0; --left) {
    text += textOf(element);
    if (dice.oneIn(4)) text += dice.oneIn(2) ? "\n" : "<!--c-->";
    for (int changes = dice.roll(3); changes > 0; --changes)
      changeOne(element, dice);
    if (dice.oneIn(20)) element = anyElement(dice);
  }
  return text + "</r>";
}

// --------------------------------------------------------------------------------------------------- reading

/// The words are the same objects in all calls, as in the library: lookups are remembered by their address.
const std::vector<QString>& queried() {
  static const std::vector<QString> all = [] {
    std::vector<QString> made;
    for (const char* const name : names)
      made.push_back(QLatin1String(name));
    return made;
  }();
  return all;
}

/// Where an attribute starts, as its distance from the start tag: checked against the text by the caller.
std::string placeOf(const ElementView& element, const QString& name) {
  const char* const at = element.attributePosition(name);
  if (!at) return "nowhere";
  const std::string expected = name.toStdString() + '=';
  EXPECT_EQ(std::string_view(at, expected.size()), expected);
  return std::to_string(at - element.position());
}

struct Reading {
  Dice dice;       // of the same seed for both views, so that both are asked the same
  bool hasPlaces;  // whether both views have them
  std::string seen;

  void query(const ElementView& element, std::size_t index) {
    const QString& name = queried()[index];
    const auto value = element.attribute(name);
    const auto text = element.attributeText(name);
    const ztcad::AttributeBytes bytes = element.attributeBytes(name);
    EXPECT_EQ(element.hasAttribute(name), value.has_value());
    EXPECT_EQ(text.has_value(), value.has_value());
    if (bytes.state != ztcad::AttributeBytes::Unknown) {
      EXPECT_EQ(bytes.state == ztcad::AttributeBytes::Known, value.has_value());
    }
    if (bytes.state == ztcad::AttributeBytes::Known && value) {
      EXPECT_EQ(std::string(bytes.ascii), value->toStdString());
      EXPECT_LE(bytes.ascii.data() + bytes.ascii.size(), bytes.endOfMemory);
    }
    if (!value) return;
    EXPECT_EQ(text->toString(), *value);
    seen += ' ' + name.toStdString() + "=[" + value->toStdString() + ']';
    if (hasPlaces) seen += '@' + placeOf(element, name);
  }

  void read(const ElementView& element) {
    seen += '<' + element.tag().toStdString();
    const bool isUsual = !dice.oneIn(4);  // the usual order of lookups
    for (std::size_t i = 0; i < queried().size(); ++i) {
      if (isUsual)
        query(element, i);
      else if (!dice.oneIn(4))
        query(element, static_cast<std::size_t>(dice.roll(static_cast<int>(queried().size()))));
    }
    seen += '>';
    element.forEachChild([this](const ElementView& child) { read(child); });
    if (dice.oneIn(8))
      query(element, static_cast<std::size_t>(dice.roll(static_cast<int>(queried().size()))));
    seen += "</>";
  }
};

/// Writes down what it learns.
class Notes final : public ztcad::ReadObserver {
 public:
  explicit Notes(const char* begin) : m_begin(begin) {}
  void unreadMarkup(Markup markup, const char* at) override {
    note("markup", at, std::to_string(static_cast<int>(markup)));
  }
  void unreadAttribute(const char* element, const char* at, const QString& name, bool isRepeated) override {
    note("attribute", at,
         name.toStdString() + (isRepeated ? " repeated" : "") + std::to_string(element - m_begin));
  }
  void unreadElement(const char* at, const QString& tag) override { note("element", at, tag.toStdString()); }
  void unreadText(const char* element, const char* at) override {
    note("text", at, std::to_string(element - m_begin));
  }
  /// Both readers report them; of one element, in orders of their own.
  std::vector<std::string> sorted() const {
    std::vector<std::string> notes = m_notes;
    std::sort(notes.begin(), notes.end());
    return notes;
  }

 private:
  void note(const std::string& kind, const char* at, const std::string& detail) {
    m_notes.push_back(kind + " at " + std::to_string(at - m_begin) + ": " + detail);
  }
  const char* const m_begin;
  std::vector<std::string> m_notes;
};

/// Whether the text is plain; if it is, it reads as its tree and as the general reader reads it.
bool isPlainAndReadAlike(const std::string& xml, std::uint64_t seed) {
  const std::vector<char> memory(xml.begin(),
                                 xml.end());  // of that size: the sanitizers find reads beyond it
  const std::string_view bytes(memory.data(), memory.size());
  Reading plain{Dice(seed), false, {}};
  const auto kind = ztcad::XmlBytes::AsDeclared;
  if (!ztcad::readPlainXml(bytes, kind, [&](const ElementView& root) { plain.read(root); })) return false;

  QDomDocument tree;
  EXPECT_TRUE(xml_tree::parseXml(QByteArray::fromStdString(xml), tree).parsed) << xml;
  Reading fromTree{Dice(seed), false, {}};
  fromTree.read(ztcad::DomView(tree.documentElement()));
  EXPECT_EQ(plain.seen, fromTree.seen) << xml;

  Reading observed{Dice(seed), true, {}};
  Notes notes(bytes.data());
  EXPECT_TRUE(ztcad::readPlainXml(
      bytes, kind, [&](const ElementView& root) { observed.read(root); }, &notes));
  const ztcad::XmlText text(bytes, kind);
  Reading general{Dice(seed), true, {}};
  Notes generalNotes(text.characters().data());
  EXPECT_TRUE(ztcad::readXml(
                  text, [&](const ElementView& root) { general.read(root); }, &generalNotes)
                  .parsed);
  EXPECT_EQ(observed.seen, general.seen) << xml;
  EXPECT_EQ(notes.sorted(), generalNotes.sorted()) << xml;
  return true;
}

TEST(SiblingDifferential, ElementsThatNearlyEqualTheOneBeforeAreReadAsInATree) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(30000);
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    const std::string xml = anySeries(dice);
    EXPECT_TRUE(isPlainAndReadAlike(xml, dice.bits())) << xml;
  }
}

TEST(SiblingDifferential, DamagedSeriesAreRefusedOrReadAsInATree) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(30000);
  int plain = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    std::string xml = anySeries(dice);
    if (dice.oneIn(3)) {
      mutate(xml, dice);
    } else {
      const std::string_view characters = "\"'=<>/& ;#ap0\t\n\xD0\x01";
      const auto at = static_cast<std::size_t>(dice.roll(static_cast<int>(xml.size())));
      if (dice.oneIn(3))
        xml.erase(at, 1);
      else if (dice.oneIn(2))
        xml.insert(at, 1, dice.pick(characters));
      else
        xml[at] = dice.pick(characters);
    }
    plain += isPlainAndReadAlike(xml, dice.bits()) ? 1 : 0;
  }
  EXPECT_GT(plain, rounds / 10);
  EXPECT_LT(plain, rounds - rounds / 10);
}

// Each byte of the second of three equal start tags is replaced, removed and doubled.
TEST(SiblingDifferential, OneByteMakesTheDifference) {
  const std::string tag = "<p a=\"0123456789abcdef&amp;\" name='\xD0\xAF' b=\"\"/>";
  const std::string_view characters = "\"'=<>/& ;#ab0";
  int plain = 0;
  for (std::size_t place = 0; place < tag.size(); ++place) {
    std::vector<std::string> changed = {tag, tag};
    changed[0].erase(place, 1);
    changed[1].insert(place, 1, tag[place]);
    for (const char c : characters) {
      changed.push_back(tag);
      changed.back()[place] = c;
    }
    for (const std::string& second : changed)
      for (const std::uint64_t seed : {1U, 2U})
        plain += isPlainAndReadAlike("<r>" + tag + second + tag + second + "</r>", seed) ? 1 : 0;
  }
  EXPECT_GT(plain, 100);
}

// A tag whose text ends with the memory, after a longer one.
TEST(SiblingDifferential, ATextMayEndWithinWhatTheTagBeforeHas) {
  const std::string tag = "<p a=\"0123456789abcdef0123456789\" b=\"1\"/>";
  for (std::size_t size = 0; size <= tag.size(); ++size)
    for (const char* const end : {"", ">", "/>", "/></r>", "</r>"})
      isPlainAndReadAlike("<r>" + tag + tag.substr(0, size) + end, 1);
  EXPECT_TRUE(isPlainAndReadAlike("<r>" + tag + tag + "</r>", 1));
}

TEST(SiblingDifferential, ManyDifferentTagsAreReadAsInATree) {
  for (const int count : {1, 255, 256, 257, 600}) {
    std::string xml = "<r>";
    for (int pass = 0; pass < 2; ++pass) {
      for (int i = 0; i < count; ++i) {
        const std::string tag = "t" + std::to_string(i);
        xml += '<' + tag + " a='" + tag + "'><" + tag + "/><p/></" + tag + '>';
      }
    }
    EXPECT_TRUE(isPlainAndReadAlike(xml + "</r>", 1)) << count;
  }
}

}  // namespace
