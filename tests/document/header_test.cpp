#include "core/document/header.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <map>
#include <optional>
#include <QDomDocument>
#include <QDomElement>
#include <string>

namespace {

using Attributes = std::map<std::string, std::string>;

ztCAD_HeaderNode filledHeader() {
  ztCAD_HeaderNode header;
  header.setState({true, 2});
  header.setMajorVersion(1);
  header.setMinorVersion(0);
  header.setInform(QString("note"));
  header.setProducerName(QString("producer"));
  header.setProducerVersion(QString("1.2"));
  header.setProducerPlatform(QString("platform"));
  return header;
}

/// The attributes of the element "header" that `header` writes into a root element.
Attributes written(const ztCAD_HeaderNode& header) {
  QDomDocument document;
  QDomElement root = document.createElement("root");
  EXPECT_EQ(&header.writeXml(root, document), &root);
  const QDomElement element = root.firstChildElement();
  EXPECT_EQ(element.tagName().toStdString(), "header");
  EXPECT_TRUE(element.nextSibling().isNull());
  EXPECT_FALSE(element.hasChildNodes());
  EXPECT_FALSE(root.hasAttributes());
  Attributes attributes;
  const QDomNamedNodeMap nodes = element.attributes();
  for (int i = 0; i < nodes.count(); ++i)
    attributes[nodes.item(i).nodeName().toStdString()] = nodes.item(i).nodeValue().toStdString();
  return attributes;
}

/// A new header read from an element with these attributes.
ztCAD_HeaderNode readFrom(const QString& attributes) {
  QDomDocument document;
  EXPECT_TRUE(document.setContent("<header " + attributes + "/>"));
  ztCAD_HeaderNode header;
  bool fault = true;
  EXPECT_TRUE(header.readXml(document.documentElement(), fault));
  EXPECT_FALSE(fault);
  return header;
}

bool isError(const ztCAD_State& state) { return state.isSet && state.code == 3; }

TEST(Header, IsCreatedWithoutFieldsAndWithAnUnsetStateOfCodeOne) {
  const ztCAD_HeaderNode header;
  EXPECT_FALSE(header.state().isSet);
  EXPECT_EQ(header.state().code, 1u);
  EXPECT_FALSE(header.majorVersion());
  EXPECT_FALSE(header.minorVersion());
  EXPECT_FALSE(header.inform());
  EXPECT_FALSE(header.producerName());
  EXPECT_FALSE(header.producerVersion());
  EXPECT_FALSE(header.producerPlatform());
}

TEST(Header, CreatedFromATextHasOnlyInform) {
  const ztCAD_HeaderNode header{QString("note")};
  EXPECT_EQ(header.inform(), QString("note"));
  EXPECT_EQ(written(header), (Attributes{{"inform", "note"}}));
  EXPECT_FALSE(header.state().isSet);
}

TEST(Header, CreatedFromAnEmptyTextHasAnEmptyInform) {
  EXPECT_EQ(written(ztCAD_HeaderNode{QString()}), (Attributes{{"inform", ""}}));
}

TEST(Header, WithoutFieldsWritesAnElementWithoutAttributes) { EXPECT_EQ(written({}), Attributes{}); }

TEST(Header, WritesEverySetFieldButNotTheState) {
  EXPECT_EQ(written(filledHeader()), (Attributes{{"majorVersion", "1"},
                                                 {"minorVersion", "0"},
                                                 {"inform", "note"},
                                                 {"producerName", "producer"},
                                                 {"producerVersion", "1.2"},
                                                 {"producerPlatform", "platform"}}));
}

TEST(Header, WritesEachFieldIndependently) {
  struct Row {
    const char* name;
    void (*set)(ztCAD_HeaderNode&);
    Attributes attributes;
  };
  const Row rows[] = {
      {"major", [](ztCAD_HeaderNode& h) { h.setMajorVersion(7); }, {{"majorVersion", "7"}}},
      {"major zero", [](ztCAD_HeaderNode& h) { h.setMajorVersion(0); }, {{"majorVersion", "0"}}},
      {"minor", [](ztCAD_HeaderNode& h) { h.setMinorVersion(8); }, {{"minorVersion", "8"}}},
      {"huge", [](ztCAD_HeaderNode& h) { h.setMinorVersion(UINT32_MAX); }, {{"minorVersion", "4294967295"}}},
      {"inform", [](ztCAD_HeaderNode& h) { h.setInform(QString("i")); }, {{"inform", "i"}}},
      {"empty name", [](ztCAD_HeaderNode& h) { h.setProducerName(QString()); }, {{"producerName", ""}}},
      {"name", [](ztCAD_HeaderNode& h) { h.setProducerName(QString("n")); }, {{"producerName", "n"}}},
      {"version",
       [](ztCAD_HeaderNode& h) { h.setProducerVersion(QString("v")); },
       {{"producerVersion", "v"}}},
      {"platform",
       [](ztCAD_HeaderNode& h) { h.setProducerPlatform(QString("p")); },
       {{"producerPlatform", "p"}}},
      {"state",
       [](ztCAD_HeaderNode& h) {
         h.setState({true, 3});
       },
       {}},
  };
  for (const Row& row : rows) {
    ztCAD_HeaderNode header;
    row.set(header);
    EXPECT_EQ(written(header), row.attributes) << row.name;
  }
}

TEST(Header, DoesNotWriteClearedFields) {
  ztCAD_HeaderNode header = filledHeader();
  header.setMajorVersion(std::nullopt);
  header.setInform(std::nullopt);
  header.setProducerName(std::nullopt);
  EXPECT_EQ(
      written(header),
      (Attributes{{"minorVersion", "0"}, {"producerVersion", "1.2"}, {"producerPlatform", "platform"}}));
}

TEST(Header, ReadsVersionsThatAreUnsignedIntegers) {
  struct Row {
    const char* name;
    const char* attribute;
    std::optional<std::uint32_t> version;
  };
  const Row rows[] = {
      {"empty", "majorVersion=''", {}},
      {"absent", "", {}},
      {"zero", "majorVersion='0'", 0u},
      {"one", "majorVersion='1'", 1u},
      {"largest", "majorVersion='4294967295'", 4294967295u},
      {"too large", "majorVersion='4294967296'", {}},
      {"negative", "majorVersion='-1'", {}},
      {"fraction", "majorVersion='1.5'", {}},
      {"word", "majorVersion='one'", {}},
      {"surrounded by spaces", "majorVersion=' 12 '", 12u},
      {"plus", "majorVersion='+3'", 3u},
      {"leading zeros", "majorVersion='007'", 7u},
      {"hexadecimal", "majorVersion='0x10'", {}},
      {"different case", "MajorVersion='1'", {}},
  };
  for (const Row& row : rows) {
    const ztCAD_HeaderNode header = readFrom(QString(row.attribute) + " minorVersion='2'");
    EXPECT_EQ(header.majorVersion(), row.version) << row.name;
    EXPECT_EQ(header.minorVersion(), 2u) << row.name;
    EXPECT_EQ(isError(header.state()), !row.version) << row.name;
  }
}

TEST(Header, AMissingVersionSetsTheStateToError) {
  struct Row {
    const char* name;
    const char* attributes;
    bool error;
  };
  const Row rows[] = {
      {"no attribute", "", true},
      {"only inform", "inform='i'", true},
      {"without minor", "majorVersion='1'", true},
      {"without major", "minorVersion='1'", true},
      {"minor not a number", "majorVersion='1' minorVersion='x'", true},
      {"both", "majorVersion='1' minorVersion='0'", false},
  };
  for (const Row& row : rows) {
    const ztCAD_State state = readFrom(row.attributes).state();
    EXPECT_EQ(state.isSet, row.error) << row.name;
    EXPECT_EQ(state.code, row.error ? 3u : 1u) << row.name;
  }
}

TEST(Header, ReadsInform) {
  EXPECT_EQ(readFrom("inform='a &amp; &lt;b'").inform(), QString("a & <b"));
  EXPECT_EQ(readFrom(QString::fromUtf8("inform='Корпус 😀 &#x401;'")).inform(),
            QString::fromUtf8("Корпус 😀 Ё"));
  EXPECT_EQ(readFrom("inform=''").inform(), QString(""));
  EXPECT_FALSE(readFrom("majorVersion='1'").inform());
}

TEST(Header, DoesNotReadTheProducer) {
  const ztCAD_HeaderNode header =
      readFrom("majorVersion='1' minorVersion='0' producerName='a' producerVersion='b' producerPlatform='c'");
  EXPECT_FALSE(header.producerName());
  EXPECT_FALSE(header.producerVersion());
  EXPECT_FALSE(header.producerPlatform());
  EXPECT_FALSE(header.state().isSet);
}

TEST(Header, IgnoresUnknownAttributesAndChildren) {
  QDomDocument document;
  ASSERT_TRUE(document.setContent(QString(
      "<header state='2' other='x' majorVersion='1' minorVersion='2'><inform>i</inform>text</header>")));
  ztCAD_HeaderNode header;
  bool fault = false;
  EXPECT_TRUE(header.readXml(document.documentElement(), fault));
  EXPECT_FALSE(header.state().isSet);
  EXPECT_FALSE(header.inform());
  EXPECT_EQ(written(header), (Attributes{{"majorVersion", "1"}, {"minorVersion", "2"}}));
}

TEST(Header, ReadingKeepsFieldsThatTheElementLacks) {
  QDomDocument document;
  ASSERT_TRUE(document.setContent(QString("<header majorVersion='x' inform='new' producerName='new'/>")));
  ztCAD_HeaderNode header = filledHeader();
  bool fault = false;
  EXPECT_TRUE(header.readXml(document.documentElement(), fault));
  EXPECT_EQ(header.majorVersion(), 1u);
  EXPECT_EQ(header.minorVersion(), 0u);
  EXPECT_EQ(header.inform(), QString("new"));
  EXPECT_EQ(header.producerName(), QString("producer"));
  EXPECT_EQ(header.state().code, 2u);
}

TEST(Header, ReadsTheVersionsAndInformThatItWrote) {
  QDomDocument document;
  QDomElement root = document.createElement("root");
  filledHeader().writeXml(root, document);
  ztCAD_HeaderNode header;
  bool fault = true;
  EXPECT_TRUE(header.readXml(root.firstChildElement(), fault));
  EXPECT_FALSE(fault);
  EXPECT_EQ(written(header), (Attributes{{"majorVersion", "1"}, {"minorVersion", "0"}, {"inform", "note"}}));
  EXPECT_FALSE(header.state().isSet);
}

TEST(Header, CopiesEveryField) {
  const ztCAD_HeaderNode header = filledHeader();
  ztCAD_HeaderNode copy{QString("earlier")};
  copy = header;
  EXPECT_EQ(written(copy), written(header));
  EXPECT_EQ(copy.toText(), header.toText());
  copy = ztCAD_HeaderNode();
  EXPECT_EQ(written(copy), Attributes{});
}

TEST(Header, TextHasInformAndWhetherTheVersionsAreSet) {
  struct Row {
    const char* name;
    void (*set)(ztCAD_HeaderNode&);
    const char* text;
  };
  const Row rows[] = {
      {"no field", [](ztCAD_HeaderNode&) {},
       "Header( inform=no Value , majorVersion=0 , minorVersion=0 ) state=no Value"},
      {"empty inform", [](ztCAD_HeaderNode& h) { h.setInform(QString()); },
       "Header( inform= , majorVersion=0 , minorVersion=0 ) state=no Value"},
      {"inform", [](ztCAD_HeaderNode& h) { h.setInform(QString::fromUtf8("Корпус")); },
       "Header( inform=Корпус , majorVersion=0 , minorVersion=0 ) state=no Value"},
      {"placeholders", [](ztCAD_HeaderNode& h) { h.setInform(QString("%1 %2")); },
       "Header( inform=%1 %2 , majorVersion=0 , minorVersion=0 ) state=no Value"},
      {"major", [](ztCAD_HeaderNode& h) { h.setMajorVersion(7); },
       "Header( inform=no Value , majorVersion=1 , minorVersion=0 ) state=no Value"},
      {"minor zero", [](ztCAD_HeaderNode& h) { h.setMinorVersion(0); },
       "Header( inform=no Value , majorVersion=0 , minorVersion=1 ) state=no Value"},
      {"producer", [](ztCAD_HeaderNode& h) { h.setProducerName(QString("p")); },
       "Header( inform=no Value , majorVersion=0 , minorVersion=0 ) state=no Value"},
  };
  for (const Row& row : rows) {
    ztCAD_HeaderNode header;
    row.set(header);
    EXPECT_EQ(header.toText().toStdString(), row.text) << row.name;
  }
}

TEST(Header, TextNamesTheState) {
  struct Row {
    const char* name;
    ztCAD_State state;
    const char* word;
  };
  const Row rows[] = {
      {"flag clear", {false, 1}, "no Value"},
      {"flag clear with another code", {false, 3}, "no Value"},
      {"0", {true, 0}, "ok"},
      {"1", {true, 1}, "unknown"},
      {"2", {true, 2}, "warning"},
      {"3", {true, 3}, "error"},
      {"4", {true, 4}, "unknown value"},
      {"7", {true, 7}, "unknown value"},
      {"largest", {true, UINT32_MAX}, "unknown value"},
  };
  for (const Row& row : rows) {
    ztCAD_HeaderNode header;
    header.setState(row.state);
    EXPECT_EQ(header.toText().toStdString(),
              std::string("Header( inform=no Value , majorVersion=0 , minorVersion=0 ) state=") + row.word)
        << row.name;
  }
}

}  // namespace
