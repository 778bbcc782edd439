#include "xml/xml_view.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using ztcad::ElementView;
using ztcad::ParseOutcome;
using ztcad::readXml;
using ztcad::XmlBytes;
using ztcad::XmlText;

namespace {

ParseOutcome read(const std::string& xml, const std::function<void(const ElementView&)>& visit,
                  XmlBytes kind = XmlBytes::AsDeclared) {
  return readXml(XmlText(xml, kind), visit);
}

/// The text of the root.
std::string textOf(const std::string& xml) {
  std::string text;
  read(xml, [&](const ElementView& root) { text = root.text().toString().toStdString(); });
  return text;
}

/// The tags of the elements in the order in which they are visited, with their depth as indent.
std::string tagsOf(const std::string& xml) {
  std::string tags;
  const std::function<void(const ElementView&, int)> visit = [&](const ElementView& element, int depth) {
    tags += std::string(static_cast<std::size_t>(depth), ' ') + element.tag().toStdString() + '\n';
    element.forEachChild([&](const ElementView& child) { visit(child, depth + 1); });
  };
  read(xml, [&](const ElementView& root) { visit(root, 0); });
  return tags;
}

}  // namespace

TEST(XmlView, TextIsThatOfTheElementAndItsDescendants) {
  EXPECT_EQ(textOf("<r>1,<a>2</a><!--x-->,<![CDATA[3]]><?p?><b><c>,4</c></b></r>"), "1,2,3,4");
}

TEST(XmlView, ReferencesAreReplacedAndThoseToUnknownEntitiesDisappear) {
  EXPECT_EQ(textOf("<r>&#49;&amp;&x;2&#x42f;</r>"), "1&2Я");
}

TEST(XmlView, WhitespaceAloneIsNoTextHoweverItIsWritten) {
  EXPECT_EQ(textOf("<r> &#32;\n<a> x </a>&#9;<![CDATA[ ]]>\u00a0</r>"), " x  ");
}

TEST(XmlView, ChildrenAreVisitedHoweverMuchOfThemIsRead) {
  EXPECT_EQ(tagsOf("<?p?><r><a><b/>t</a><c/>u<d><e></e></d></r>"), "r\n a\n  b\n c\n d\n  e\n");
  std::vector<std::string> tags;
  read("<?p?><r><a><b/><b>t</b></a><c>u</c></r>", [&](const ElementView& root) {
    root.forEachChild([&](const ElementView& child) { tags.push_back(child.tag().toStdString()); });
  });
  EXPECT_EQ(tags, (std::vector<std::string>{"a", "c"}));
}

TEST(XmlView, AttributesCanBeReadAfterTheChildren) {
  std::string values;
  read("<r a='1' b='&lt;'><c a='2'/></r>", [&](const ElementView& root) {
    root.forEachChild([&](const ElementView& child) { values += child.attribute("a")->toStdString(); });
    values += root.attribute("a")->toStdString() + root.attribute("b")->toStdString();
    EXPECT_FALSE(root.hasAttribute("c"));
  });
  EXPECT_EQ(values, "21<");
}

TEST(XmlView, AnyNameOfAnAttributeIsFound) {
  read("<r имя='1' b='2' b='3'/>", [](const ElementView& root) {
    EXPECT_EQ(root.attribute(QString::fromUtf8("имя")), QString("1"));
    EXPECT_EQ(root.attribute("b"), QString("3"));  // the last one counts
  });
}

TEST(XmlView, OfAnIllFormedTextWhatComesBeforeTheErrorIsVisited) {
  EXPECT_EQ(tagsOf("<r><a/><b><c x='1'></d></r>"), "r\n a\n b\n  c\n");
  EXPECT_EQ(tagsOf("<r><a/><b "), "r\n a\n");
  EXPECT_EQ(textOf("<r>1<a/>2<b/>3"), "12");  // the text that the end cuts is not reported
  EXPECT_EQ(tagsOf("r"), "");
}

TEST(XmlView, ARefusedTextSaysSo) {
  const ParseOutcome outcome = read(std::string("<r><a/>\0</r>", 12), [](const ElementView&) {});
  EXPECT_FALSE(outcome.parsed);
  EXPECT_TRUE(outcome.isRefused);
  EXPECT_EQ(outcome.column, 8);
  EXPECT_FALSE(read("<r></s>", [](const ElementView&) {}).isRefused);
}

TEST(XmlView, AnEncodingThatIsNotSupportedIsRefusedByName) {
  bool isVisited = false;
  const std::string xml = "<?xml version='1.0'\n encoding='Shift_JIS'?><r/>";
  const ParseOutcome outcome = read(xml, [&](const ElementView&) { isVisited = true; });
  EXPECT_EQ(outcome.message, "encoding not supported: Shift_JIS");
  EXPECT_TRUE(outcome.isRefused);
  EXPECT_EQ(outcome.line, 2);
  EXPECT_EQ(outcome.column, 12);
  EXPECT_FALSE(isVisited);
  EXPECT_TRUE(read(
                  xml, [](const ElementView&) {}, XmlBytes::Utf8)
                  .parsed);
}
