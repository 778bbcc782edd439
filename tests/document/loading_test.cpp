#include <gtest/gtest.h>
#include <QFile>
#include <string>

#include "captured_debug_output.h"
#include "sample_documents.h"

// Loading from a file: result codes, the state of the document afterwards, messages.

namespace {

using Messages = std::vector<std::string>;

/// A document with points, a loaded tree and a header, to test what a load changes.
class Loading : public testing::Test {
 protected:
  Loading() {
    loadString(document, "<GMD><point name='old' center='1'/></GMD>");
    addTemplatePoints(document, {"oldTemplate"});
    m_tree = document.xmlText();
  }

  void expectUntouched() const {
    EXPECT_EQ(namesIn(document.content().points), Names{"old"});
    EXPECT_EQ(namesIn(document.content().templatePoints), Names{"oldTemplate"});
    EXPECT_EQ(document.xmlText(), m_tree);
    EXPECT_EQ(document.header().inform(), QString("old inform"));
  }

  void expectNoContent() const {
    EXPECT_TRUE(document.content().points.empty());
    EXPECT_TRUE(document.content().templatePoints.empty());
  }

  ztCAD_GMDDocument document{"old inform"};
  TemporaryFiles files;

 private:
  std::string m_tree;
};

TEST_F(Loading, SucceedsWithCodeZero) {
  const CapturedDebugOutput output;
  const FileLoad load = loadBytes(document, documentWith("<point name='A' center='1,2,3'/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_TRUE(load.read);
  EXPECT_FALSE(load.fault);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
  EXPECT_EQ(document.content().points.front().center().z(), 3);
  EXPECT_EQ(output.messages(), Messages{});
}

TEST_F(Loading, EmptiesEveryContainerFirst) {
  EXPECT_EQ(loadBytes(document, documentWith("")).code, 0);
  expectNoContent();
}

TEST_F(Loading, AMissingFileYieldsCode100AndLeavesTheDocument) {
  Names names = {"", files.path("absent.xml"), files.path("absent/document.xml"),
                 files.path("absent\xFF.xml")};
#if !defined(_WIN32)  // on Windows QFile::link creates a regular file
  ASSERT_TRUE(QFile::link("nowhere", QString::fromStdString(files.path("dangling"))));
  names.push_back(files.path("dangling"));
#endif
  const CapturedDebugOutput output;
  for (const std::string& name : names) {
    const FileLoad load = loadFile(document, name);
    EXPECT_EQ(load.code, 100) << name;
    EXPECT_FALSE(load.read) << name;
    EXPECT_FALSE(load.fault) << name;
  }
  EXPECT_EQ(output.messages(), Messages{});
  expectUntouched();
}

TEST_F(Loading, AFileThatDoesNotOpenYieldsTheErrorOfQFile) {
  const CapturedDebugOutput output;
  const FileLoad load = loadFile(document, files.folder());
  QFile folder(QString::fromStdString(files.folder()));
  ASSERT_FALSE(folder.open(QIODevice::ReadOnly));
  EXPECT_EQ(load.code, folder.error());
  EXPECT_EQ(load.code, QFileDevice::OpenError);
  EXPECT_FALSE(load.read);
  EXPECT_FALSE(load.fault);
  EXPECT_EQ(output.messages(), Messages{"Error on opening file " + files.folder()});
  expectUntouched();
}

TEST_F(Loading, TextThatDoesNotParseYieldsCode110AndLeavesTheDocument) {
  struct Row {
    const char* name;
    std::string bytes;
  };
  const Row rows[] = {
      {"empty", ""},
      {"whitespace", " \n"},
      {"not XML", "point"},
      {"declaration only", "<?xml version=\"1.0\"?>"},
      {"truncated", "<GMD><point name='A' center='1'/>"},
      {"truncated in a tag", "<GMD><point name='A"},
      {"wrong closing tag", "<GMD></GMd>"},
      {"second root", "<GMD/><GMD/>"},
      {"NUL inside", std::string("<GMD>\0</GMD>", 12)},
      {"NUL after the root", std::string("<GMD/>\0", 7)},
      {"entity declaration", "<!DOCTYPE GMD [<!ENTITY e 'x'>]><GMD/>"},
      {"truncated tag of another root", "<other"},
  };
  for (const Row& row : rows) {
    const CapturedDebugOutput output;
    const FileLoad load = loadBytes(document, row.bytes);
    EXPECT_EQ(load.code, 110) << row.name;
    EXPECT_FALSE(load.read) << row.name;
    EXPECT_FALSE(load.fault) << row.name;
    EXPECT_EQ(output.messages(), Messages{"Error on parsing file"}) << row.name;
  }
  expectUntouched();
}

TEST_F(Loading, AnotherRootYieldsCode120AndLeavesTheDocument) {
  const char* const texts[] = {"<other/>",
                               "<gmd/>",
                               "<GMDx/>",
                               "<ztCAD_GMD/>",
                               "<point name='A' center='1'/>",
                               "<x:GMD xmlns:x='u'><point name='A' center='1'/></x:GMD>",
                               "<other><GMD><point name='A' center='1'/></GMD></other>"};
  for (const char* text : texts) {
    const CapturedDebugOutput output;
    const FileLoad load = loadBytes(document, text);
    EXPECT_EQ(load.code, 120) << text;
    EXPECT_FALSE(load.read) << text;
    EXPECT_FALSE(load.fault) << text;
    EXPECT_EQ(output.messages(), Messages{"Error on scanning ztCAD_GMD-file"}) << text;
  }
  expectUntouched();
}

TEST_F(Loading, ADocumentThatFailsTheCheckYieldsCode120AndIsKept) {
  // the second A becomes A_$1, which is already the name of the first element
  const CapturedDebugOutput output;
  const FileLoad load = loadBytes(document, documentWith("<templatePoint name='A_$1' center='1'/>"
                                                         "<templatePoint name='A' center='1'/>"
                                                         "<templatePoint name='A' center='1'/>"
                                                         "<point name='P' center='1'/>"));
  EXPECT_EQ(load.code, 120);
  EXPECT_TRUE(load.read);
  EXPECT_FALSE(load.fault);
  EXPECT_EQ(namesIn(document.content().templatePoints), (Names{"A_$1", "A", "A_$1"}));
  EXPECT_EQ(namesIn(document.content().points), Names{"P"});
  EXPECT_EQ(output.messages(), Messages{});
}

TEST_F(Loading, UnifiesNames) {
  EXPECT_EQ(loadBytes(document, documentWith("<point name='P' center='1'/><point name='P' center='2'/>"
                                             "<point name='P' center='3'/>"))
                .code,
            0);
  EXPECT_EQ(namesIn(document.content().points), (Names{"P", "P_$1", "P_$2"}));
}

TEST_F(Loading, IgnoresUnknownContent) {
  const CapturedDebugOutput output;
  const FileLoad load =
      loadBytes(document, documentWith("text<unknown name='U'><point name='inside' center='1'/></unknown>"
                                       "<!--<point name='comment' center='1'/>--><?point data?>"
                                       "<![CDATA[<point name='cdata' center='1'/>]]>"
                                       "<Point name='case' center='1'/><x:point name='prefix' center='1'/>"
                                       "<point name='A' center='1'/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
  EXPECT_EQ(output.messages(), Messages{});
}

TEST_F(Loading, APointThatCannotBeReadKeepsWhatCouldBeRead) {
  EXPECT_EQ(
      loadBytes(document, documentWith("<point name='A' center='x' comment='c'/><point center='1'/>")).code,
      0);
  ASSERT_EQ(namesIn(document.content().points), (Names{"A", ""}));
  const ztCAD_Point& first = document.content().points.front();
  EXPECT_FALSE(first.readOk());
  EXPECT_FALSE(first.center().isValid());
  EXPECT_EQ(first.property().attributes().comment(), QString("c"));
  EXPECT_FALSE(document.content().points.back().readOk());
  EXPECT_TRUE(document.content().points.back().center().isValid());
}

TEST_F(Loading, EachKindKeepsTheOrderOfTheFile) {
  loadBytes(document, documentWith("<point name='B' center='1'/><templatePoint name='D' center='1'/>"
                                   "<point name='A' center='1'/><templatePoint name='C' center='1'/>"));
  EXPECT_EQ(namesIn(document.content().points), (Names{"B", "A"}));
  EXPECT_EQ(namesIn(document.content().templatePoints), (Names{"D", "C"}));
}

TEST_F(Loading, CanBeRepeatedAndReplacesTheTree) {
  loadBytes(document, "<GMD><point name='A' center='1'/></GMD>");
  loadBytes(document, "<GMD><point name='B' center='1'/></GMD>");
  EXPECT_EQ(namesIn(document.content().points), Names{"B"});
  EXPECT_EQ(document.xmlText().rfind("<GMD>\n <point center=\"1\" name=\"B\"/>\n</GMD>\n header", 0), 0u)
      << document.xmlText();
}

// ---------------------------------------------------------------------------------------------------- header

TEST_F(Loading, KeepsTheHeaderIfTheFileHasNone) {
  ztCAD_HeaderNode header;
  header.setMajorVersion(3);
  header.setProducerName(QString("producer"));
  header.setState({true, 2});
  document.setHeader(header);
  loadBytes(document, documentWith("<point name='A' center='1'/>"));
  EXPECT_EQ(document.header().majorVersion(), 3u);
  EXPECT_EQ(document.header().producerName(), QString("producer"));
  EXPECT_EQ(document.header().state().code, 2u);
}

TEST_F(Loading, TheHeaderOfTheFileReplacesEveryFieldAndItsProducerIsIgnored) {
  ztCAD_HeaderNode header;
  header.setMinorVersion(3);
  header.setInform(QString("earlier"));
  header.setProducerName(QString("producer"));
  header.setState({true, 2});
  document.setHeader(header);
  loadBytes(document, documentWith("<header majorVersion='1' producerName='file' producerVersion='file'/>"));
  EXPECT_EQ(document.header().majorVersion(), 1u);
  EXPECT_FALSE(document.header().minorVersion());
  EXPECT_FALSE(document.header().inform());
  EXPECT_FALSE(document.header().producerName());
  EXPECT_FALSE(document.header().producerVersion());
  EXPECT_TRUE(document.header().state().isSet);
  EXPECT_EQ(document.header().state().code, 3u);
}

TEST_F(Loading, AHeaderWithoutMinorVersionLoadsWithAnErrorState) {
  const FileLoad load = loadBytes(document, documentWith("<header majorVersion='1' inform='i'/>"));
  EXPECT_EQ(load.code, 0);
  EXPECT_FALSE(load.fault);
  EXPECT_EQ(document.header().toText().toStdString(),
            "Header( inform=i , majorVersion=1 , minorVersion=0 ) state=error");
}

TEST_F(Loading, TheLastOfSeveralHeadersWins) {
  loadBytes(document,
            documentWith("<header majorVersion='1' minorVersion='2' inform='first'/>"
                         "<point name='A' center='1'/><header majorVersion='3' minorVersion='4'/>"));
  EXPECT_EQ(document.header().majorVersion(), 3u);
  EXPECT_FALSE(document.header().inform());
}

TEST_F(Loading, AHeaderInsideAnotherElementIsIgnored) {
  loadBytes(document,
            documentWith("<unknown><header majorVersion='9' minorVersion='9' inform='inside'/></unknown>"));
  EXPECT_EQ(document.header().inform(), QString("old inform"));
}

// ------------------------------------------------------------------------------------------------ fault flag

TEST_F(Loading, FaultReportsWhetherAChildOfTheRootCouldNotBeRead) {
  const std::string good = "<point name='good' center='1'/>";
  const std::string bad = "<point name='bad'/>";
  const std::string header = "<header majorVersion='1' minorVersion='0'/>";
  struct Row {
    const char* name;
    std::string children;
    bool fault;
  };
  const Row rows[] = {
      {"no child", "", false},
      {"good point", good, false},
      {"point without center", bad, true},
      {"point without name", "<point center='1'/>", true},
      {"center of four numbers", "<point name='A' center='1,2,3,4'/>", true},
      {"point with an invalid colour", "<point name='A' center='1' color='rgb, 1, 2, 3'/>", true},
      {"colour with a missing component", "<point name='A' center='1' color='RGB, 1, 2'/>", false},
      {"invalid coordinate system", "<point name='A' center='1' LCS='CS, 1'/>", false},
      {"bad template point", "<templatePoint name='A' center=''/>", true},
      {"good point after a bad one", bad + good, true},
      {"bad point after a good one", good + bad, true},
      {"bad kind before a good other kind", bad + "<templatePoint name='A' center='1'/>", true},
      {"header only", header, false},
      {"header without versions", "<header/>", false},
      {"header before a bad point", header + bad, true},
      {"header after a bad point", bad + header, false},
      {"header without versions after a bad point", bad + "<header/>", false},
      {"bad points on both sides of a header", bad + header + bad, true},
      {"bad, header, good", bad + header + good, false},
      {"header inside another element", bad + "<unknown>" + header + "</unknown>", true},
      {"bad point inside an unknown element", "<unknown>" + bad + "</unknown>", false},
      {"unknown element", "<unknown/>", false},
  };
  for (const Row& row : rows) {
    const FileLoad load = loadBytes(document, documentWith(row.children));
    EXPECT_EQ(load.code, 0) << row.name;
    EXPECT_EQ(load.fault, row.fault) << row.name;
  }
}

// ---------------------------------------------------------------------------------------- encodings of files

TEST_F(Loading, BytesAreDecodedByByteOrderMarkOrDeclaration) {
  const auto utf16 = [](const char* text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const QChar unit : QString(text)) {
      const char halves[] = {static_cast<char>(unit.row()), static_cast<char>(unit.cell())};
      bytes += halves[bigEndian ? 0 : 1];
      bytes += halves[bigEndian ? 1 : 0];
    }
    return bytes;
  };
  struct Row {
    const char* name;
    std::string bytes;
  };
  const Row rows[] = {
      {"UTF-8 without a declaration", "<GMD><point name='Ёж' center='1'/></GMD>"},
      {"UTF-8 declared", documentWith("<point name='Ёж' center='1'/>")},
      {"UTF-8 with a byte order mark", "\xEF\xBB\xBF" + documentWith("<point name='Ёж' center='1'/>")},
      {"windows-1251 declared",
       "<?xml version='1.0' encoding='windows-1251'?><GMD><point name='\xA8\xE6' center='1'/></GMD>"},
      {"encoding name in capitals",
       "<?xml version='1.0' encoding='WINDOWS-1251'?><GMD><point name='\xA8\xE6' center='1'/></GMD>"},
      {"KOI8-R declared",
       "<?xml version='1.0' encoding='KOI8-R'?><GMD><point name='\xB3\xD6' center='1'/></GMD>"},
      {"UTF-16 little-endian", utf16("<GMD><point name='Ёж' center='1'/></GMD>", false)},
      {"UTF-16 big-endian", utf16("<GMD><point name='Ёж' center='1'/></GMD>", true)},
      {"references", "<GMD><point name='&#x401;&#1078;' center='1'/></GMD>"},
      {"CR LF",
       "<?xml version='1.0' encoding='UTF-8'?>\r\n<GMD>\r\n<point name='Ёж'\r\ncenter='1'/>\r\n</GMD>\r\n"},
      {"CR", "<?xml version='1.0' encoding='UTF-8'?>\r<GMD>\r<point name='Ёж'\rcenter='1'/>\r</GMD>\r"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(loadBytes(document, row.bytes).code, 0) << row.name;
    EXPECT_EQ(namesIn(document.content().points), Names{"Ёж"}) << row.name;
  }
}

TEST_F(Loading, DeclaredWindows1251AppliesEvenIfTheBytesAreUtf8) {
  EXPECT_EQ(loadBytes(document,
                      "<?xml version='1.0' encoding='windows-1251'?>"
                      "<GMD><point name='\xD0\x81' center='1'/></GMD>")
                .code,
            0);
  EXPECT_EQ(namesIn(document.content().points), Names{"РЃ"});
}

// ----------------------------------------------------------------------------------------------------- depth

std::string nested(int elements) {
  std::string text;
  for (int i = 0; i < elements; ++i)
    text += "<x>";
  for (int i = 0; i < elements; ++i)
    text += "</x>";
  return text;
}

TEST_F(Loading, ElementsNestedTooDeepYieldCode110) {
  const CapturedDebugOutput output;
  EXPECT_EQ(loadBytes(document, "<GMD>" + nested(255) + "</GMD>").code, 0);
  EXPECT_EQ(loadBytes(document, "<GMD>" + nested(256) + "</GMD>").code, 110);
  EXPECT_EQ(loadBytes(document, "<GMD>" + nested(100000) + "</GMD>").code, 110);
}

}  // namespace
