#include "core/node.h"

#include <gtest/gtest.h>
#include <optional>
#include <QDomDocument>
#include <QStringList>
#include <string>
#include <utility>
#include <vector>

#include "core/state.h"
#include "xml/dom_backend.h"
#include "xml/tree_of_xml.h"

namespace {

/// An element with everything that an element of the format may have: optional attributes, child elements,
/// text in several pieces.
class Crate final : public ztCAD_INode {
 public:
  std::optional<QString> label;
  std::optional<QString> owner;
  std::vector<Crate> children;
  std::vector<std::string> textPieces;
  QString readText;

  void write(ztcad::ElementSink& parent) const override {
    parent.element("crate", [this](ztcad::ElementSink& element) {
      if (owner) element.attribute("owner", *owner);
      if (label) element.attribute("label", *label);
      for (const Crate& crate : children)
        crate.write(element);
      for (const std::string& piece : textPieces)
        element.text(piece);
    });
  }

  bool read(const ztcad::ElementView& element, bool& fault) override {
    label = element.attribute("label");
    owner = element.attribute("owner");
    readText = element.text().toString();
    element.forEachChild([&](const ztcad::ElementView& child) {
      children.emplace_back();
      children.back().read(child, fault);
    });
    fault = fault || !label;
    return element.tag() == "crate";
  }
};

/// A property: attributes of another element, without an element of its own.
class TintProperty final : public ztCAD_INode {
 public:
  QString value;

  void write(ztcad::ElementSink& parent) const override { parent.attribute("tint", value); }
  bool read(const ztcad::ElementView& element, bool&) override {
    value = element.attribute("tint").value_or("none");
    return true;
  }
};

class CheckedNode : public ztCAD_StateCorrect {};

class InitiallyOkNode : public ztCAD_StateCorrect {
 public:
  InitiallyOkNode() : ztCAD_StateCorrect(true) {}
};

std::string written(const ztCAD_INode& node) {
  QDomDocument document;
  QDomElement parent = document.createElement("p");
  document.appendChild(parent);
  EXPECT_EQ(&node.writeXml(parent, document), &parent);
  return xml_tree::printTree(document, 0);
}

QDomElement rootOf(QDomDocument& document, const char* xml) {
  EXPECT_TRUE(xml_tree::parseXml(QString(xml), document).parsed);
  return document.documentElement();
}

Crate readCrate(const char* xml) {
  QDomDocument document;
  Crate crate;
  bool fault = false;
  crate.readXml(rootOf(document, xml), fault);
  return crate;
}

Crate labelled(const char* label) {
  Crate crate;
  crate.label = label;
  return crate;
}

}  // namespace

// --------------------------------------------------------------------------------------------------- writing

TEST(Node, AbsentFieldsWriteNoAttributes) { EXPECT_EQ(written(Crate()), "<p>\n<crate/>\n</p>\n"); }

TEST(Node, PresentFieldsWriteAttributesEvenIfEmpty) {
  Crate crate = labelled("");
  EXPECT_EQ(written(crate), "<p>\n<crate label=\"\"/>\n</p>\n");
  crate.owner = "<\"Я\">";
  EXPECT_EQ(written(crate), "<p>\n<crate label=\"\" owner=\"&lt;&quot;Я&quot;>\"/>\n</p>\n");
}

TEST(Node, ChildElementsAreNestedInTheirParent) {
  Crate outer = labelled("1");
  Crate middle = labelled("2");
  middle.children = {labelled("3"), labelled("4")};
  outer.children = {middle, labelled("5")};
  EXPECT_EQ(
      written(outer),
      "<p>\n<crate label=\"1\">\n<crate label=\"2\">\n<crate label=\"3\"/>\n<crate label=\"4\"/>\n</crate>\n"
      "<crate label=\"5\"/>\n</crate>\n</p>\n");
}

TEST(Node, TextPiecesFormOneTextNode) {
  Crate crate;
  crate.textPieces = {"1, ", "", "2"};
  QDomDocument document;
  QDomElement parent = document.createElement("p");
  crate.writeXml(parent, document);
  const QDomElement element = parent.firstChildElement();
  EXPECT_EQ(element.childNodes().count(), 1);
  EXPECT_TRUE(element.firstChild().isText());
  EXPECT_EQ(element.text(), "1, 2");
}

TEST(Node, EmptyTextPiecesWriteNoTextNode) {
  Crate crate;
  crate.textPieces = {"", ""};
  EXPECT_EQ(written(crate), "<p>\n<crate/>\n</p>\n");
}

TEST(Node, APropertyWritesItsAttributesToTheGivenElement) {
  TintProperty tint;
  tint.value = "red";
  EXPECT_EQ(written(tint), "<p tint=\"red\"/>\n");
}

TEST(Node, WritingAppendsAfterExistingChildren) {
  QDomDocument document;
  QDomElement parent = rootOf(document, "<p a='1'><first/></p>");
  labelled("second").writeXml(parent, document);
  EXPECT_EQ(xml_tree::printTree(document, 0), "<p a=\"1\">\n<first/>\n<crate label=\"second\"/>\n</p>\n");
}

// --------------------------------------------------------------------------------------------------- reading

TEST(Node, ReadsWhatItWrites) {
  const Crate crate = readCrate("<crate label='1' owner='Я'><crate label='2'>3, 4</crate><crate/></crate>");
  EXPECT_EQ(crate.label, QString("1"));
  EXPECT_EQ(crate.owner, QString("Я"));
  ASSERT_EQ(crate.children.size(), 2u);
  EXPECT_EQ(crate.children[0].label, QString("2"));
  EXPECT_EQ(crate.children[0].readText, "3, 4");
  EXPECT_EQ(crate.children[1].label, std::nullopt);
}

TEST(Node, AMissingAttributeIsAbsentAndAnEmptyOneIsPresent) {
  const Crate crate = readCrate("<crate owner=''/>");
  EXPECT_EQ(crate.label, std::nullopt);
  EXPECT_EQ(crate.owner, QString(""));
}

TEST(Node, UnknownAttributesAreSkipped) {
  EXPECT_EQ(readCrate("<crate Label='x' label='y' z='w'/>").label, QString("y"));
}

TEST(Node, OnlyElementsAreChildren) {
  const Crate crate =
      readCrate("<crate>t<!--c--><crate label='1'/><?p q?><![CDATA[u]]><crate label='2'/>&e;</crate>");
  ASSERT_EQ(crate.children.size(), 2u);
  EXPECT_EQ(crate.children[0].label, QString("1"));
  EXPECT_EQ(crate.children[1].label, QString("2"));
}

TEST(Node, TextIncludesTheTextOfDescendants) {
  const Crate crate = readCrate("<crate>1,<crate>2,</crate><!--3,--><![CDATA[4,]]><crate>5</crate></crate>");
  EXPECT_EQ(crate.readText, "1,2,4,5");
  EXPECT_EQ(readCrate("<crate/>").readText, "");
}

TEST(Node, TheResultAndTheFaultFlagComeFromTheClass) {
  QDomDocument document;
  Crate crate;
  bool fault = false;
  EXPECT_TRUE(crate.readXml(rootOf(document, "<crate label='1'/>"), fault));
  EXPECT_FALSE(fault);
  EXPECT_FALSE(crate.readXml(rootOf(document, "<box/>"), fault));
  EXPECT_TRUE(fault);
}

TEST(Node, APropertyReadsItsAttributesFromTheGivenElement) {
  QDomDocument document;
  TintProperty tint;
  bool fault = false;
  EXPECT_TRUE(tint.readXml(rootOf(document, "<p tint='red'/>"), fault));
  EXPECT_EQ(tint.value, "red");
}

// ---------------------------------------------------------------------------------------------------- states

TEST(StateCorrect, AnObjectThatWasNeverReadIsNotOkByDefault) {
  const CheckedNode object;
  EXPECT_FALSE(object.readOk());
  EXPECT_FALSE(object.wasRead());
}

TEST(StateCorrect, AClassMayBeOkBeforeAnyRead) {
  const InitiallyOkNode object;
  EXPECT_TRUE(object.readOk());
  EXPECT_FALSE(object.wasRead());
}

TEST(StateCorrect, DistinguishesAFailedReadFromNoRead) {
  InitiallyOkNode object;
  object.setReadOk(false);
  EXPECT_FALSE(object.readOk());
  EXPECT_TRUE(object.wasRead());
}

TEST(StateCorrect, CopiesKeepTheReadState) {
  CheckedNode read;
  read.setReadOk(true);
  const CheckedNode copy(read);
  CheckedNode assigned;
  assigned = read;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
  EXPECT_TRUE(assigned.readOk());
  EXPECT_TRUE(assigned.wasRead());
}

struct StateRow {
  const char* name;
  bool isSet;
  std::uint32_t code;
  const char* expected;
};

void PrintTo(const StateRow& row, std::ostream* out) { *out << row.name; }

class StateText : public testing::TestWithParam<StateRow> {};

TEST_P(StateText, NamesTheState) {
  const ztCAD_State state{GetParam().isSet, GetParam().code};
  EXPECT_EQ(state.toText().toStdString(), GetParam().expected);
}

const StateRow stateRows[] = {
    {"NotSet", false, 0, " state=no Value"},
    {"NotSetWithAnotherCode", false, 7, " state=no Value"},
    {"Ok", true, 0, " state=ok"},
    {"Unknown", true, 1, " state=unknown"},
    {"Warning", true, 2, " state=warning"},
    {"Error", true, 3, " state=error"},
    {"FirstOther", true, 4, " state=unknown value"},
    {"Seven", true, 7, " state=unknown value"},
    {"Largest", true, 0xffffffffu, " state=unknown value"},
};

INSTANTIATE_TEST_SUITE_P(Rows, StateText, testing::ValuesIn(stateRows),
                         [](const auto& row) { return row.param.name; });

TEST(State, IsUnsetAndUnknownByDefault) {
  const ztCAD_State state;
  EXPECT_FALSE(state.isSet);
  EXPECT_EQ(state.code, 1u);
}
