#include <gtest/gtest.h>
#include <optional>
#include <QDomDocument>
#include <QFile>
#include <QTextStream>
#include <string>

#include "recorded_answers.h"
#include "sample_documents.h"

// The content of a saved document. file_test.cpp tests how the file itself is written.

namespace {

const char* const opening = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n";

/// The bytes of a saved document with these lines inside the root.
std::string saved(const std::string& lines) { return opening + lines + "</GMD>\n"; }

std::string pointLine(const std::string& tag, const std::string& name) {
  const std::string center = tag == "point" ? "0, 0, 0;" : "";
  return "   <" + tag + " center=\"" + center +
         "\" color=\"\" comment=\"\" inform=\"\" method=\"pointXYZ\" name=\"" + name + "\"/>\n";
}

TEST(Saving, StartsWithDeclarationRootAndHeader) {
  ztCAD_GMDDocument document("note");
  EXPECT_EQ(savedBytes(document), saved("   <header inform=\"note\"/>\n"));
}

TEST(Saving, WritesAHeaderWithoutFields) {
  ztCAD_GMDDocument document("note");
  document.setHeader({});
  addPoints(document, {"A"});
  EXPECT_EQ(savedBytes(document), saved("   <header/>\n" + pointLine("point", "A")));
}

TEST(Saving, WritesTemplatePointsBeforePointsInContainerOrder) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"B", "A"});
  addTemplatePoints(document, {"D", "C"});
  EXPECT_EQ(savedBytes(document),
            saved("   <header inform=\"\"/>\n" + pointLine("templatePoint", "D") +
                  pointLine("templatePoint", "C") + pointLine("point", "B") + pointLine("point", "A")));
}

TEST(Saving, ThePlaceholderContainerWritesNothing) {
  ztCAD_GMDDocument document("");
  EXPECT_TRUE(document.content().stubs.empty());
  EXPECT_EQ(savedBytes(document), saved("   <header inform=\"\"/>\n"));
}

TEST(Saving, ADefaultPointHasAnEmptyCenter) {
  ztCAD_GMDDocument document("");
  document.content().points.appendNew();
  EXPECT_EQ(savedBytes(document), saved("   <header inform=\"\"/>\n"
                                        "   <point center=\"\" color=\"\" comment=\"\" inform=\"\" "
                                        "method=\"pointXYZ\" name=\"\"/>\n"));
}

TEST(Saving, AttributesAreSortedByName) {
  ztCAD_GMDDocument document("");
  ztCAD_Point& point = document.content().points.appendNew();
  point.setName("P");
  point.setCenter(ztCAD_Coord(1, 2.5, -0.0));
  point.property().attributes().setComment("c");
  point.property().attributes().setInform("i");
  point.property().showable().setColor(ztCAD_Color(255, 0, 128));
  point.property().showable().setVisible(ztCAD_Visible(true));
  point.property().setLcs(ztCAD_LCS(true, {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EXPECT_EQ(savedBytes(document),
            saved("   <header inform=\"\"/>\n"
                  "   <point LCS=\"CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1\" center=\"1, 2.5, 0;\" "
                  "color=\"RGB, 255, 0, 128\" comment=\"c\" inform=\"i\" method=\"pointXYZ\" name=\"P\" "
                  "visible=\"true\"/>\n"));
}

TEST(Saving, WritesTheProducerButNotTheState) {
  ztCAD_GMDDocument document("");
  ztCAD_HeaderNode header;
  header.setState({true, 3});
  header.setMajorVersion(2);
  header.setMinorVersion(10);
  header.setProducerName(QString("a"));
  header.setProducerVersion(QString("b"));
  header.setProducerPlatform(QString("c"));
  document.setHeader(header);
  EXPECT_EQ(savedBytes(document),
            saved("   <header majorVersion=\"2\" minorVersion=\"10\" producerName=\"a\" "
                  "producerPlatform=\"c\" producerVersion=\"b\"/>\n"));
}

TEST(Saving, RenamesDuplicatesInTheDocumentItself) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"P", "P", "P"});
  EXPECT_EQ(savedBytes(document), saved("   <header inform=\"\"/>\n" + pointLine("point", "P") +
                                        pointLine("point", "P_$1") + pointLine("point", "P_$2")));
  EXPECT_EQ(namesIn(document.content().points), (Names{"P", "P_$1", "P_$2"}));
}

TEST(Saving, RenamesATemplatePointWithTheNameOfAPoint) {
  ztCAD_GMDDocument document("");
  addTemplatePoints(document, {"A"});
  addPoints(document, {"A"});
  savedBytes(document);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
  EXPECT_EQ(namesIn(document.content().templatePoints), Names{"A_$1"});
}

TEST(Saving, IsReproducible) {
  ztCAD_GMDDocument document("Корпус");
  addPoints(document, {"A", "A"});
  const std::string first = savedBytes(document);
  EXPECT_EQ(savedBytes(document), first);
}

TEST(Saving, TextIsWindows1251WithReferencesForOtherCharacters) {
  struct Row {
    const char* name;
    const char* text;
    const char* bytes;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"ASCII", "a~ z", "a~ z"},
      {"Cyrillic", "Ёж", "\xA8\xE6"},
      {"numero sign", "№", "\xB9"},
      {"98 hex", "\xC2\x98", "\x98"},
      {"Latin-1 letter", "é", "&#xe9;"},
      {"Chinese", "零", "&#x96f6;"},
      {"emoji", "😀", "&#x1f600;"},
      {"last character", "\xF4\x8F\xBF\xBF", "&#x10ffff;"},
      {"markup", "<a b=\"c\"> & 'd'", "&lt;a b=&quot;c&quot;> &amp; 'd'"},
      {"end of CDATA", "]]>", "]]&gt;"},
      {"line ends and tab", "a\nb\rc\td", "a&#xa;b&#xd;c&#x9;d"},
      {"placeholder", "%1", "%1"},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document(row.text);
    EXPECT_EQ(savedBytes(document), saved(std::string("   <header inform=\"") + row.bytes + "\"/>\n"))
        << row.name;
  }
}

/// The bytes that Qt saves for a document with a header of one attribute; the order of several would vary
/// from run to run.
std::string savedByQt(const QString& name, const QString& value) {
  QDomDocument document;
  QDomElement root = document.createElement("GMD");
  document.appendChild(root);
  document.insertBefore(
      document.createProcessingInstruction("xml", "version=\"1.0\" encoding=\"windows-1251\""),
      document.firstChild());
  QDomElement header = document.createElement("header");
  header.setAttribute(name, value);
  root.appendChild(header);
  QByteArray bytes;
  QTextStream stream(&bytes);
  document.save(stream, 3);
  stream.flush();
  return bytes.toStdString();
}

TEST(Saving, BytesAreThoseOfQt) {
  RecordedAnswers recorded("saved_headers");
  for (const char* text :
       {"", "note", "Корпус № 5 «А»", "é零", "<&>\"'", "a\nb\tc", "]]>", "  ", "\xC2\xA0"}) {
    ztCAD_HeaderNode informed{QString(text)};
    ztCAD_HeaderNode produced;
    produced.setProducerName(QString(text));
    ztCAD_GMDDocument document("");
    for (const auto& [attribute, header] :
         {std::pair("inform", informed), std::pair("producerName", produced)}) {
      document.setHeader(header);
      const std::string bytes = savedBytes(document);
      if (qtIsTheReference) {
        EXPECT_EQ(bytes, savedByQt(attribute, text)) << text;
      }
      recorded.expect(attribute + sumOf(text), sumOf(bytes));
    }
  }
  recorded.finish();
}

TEST(Saving, SavedDocumentsLoadAgain) {
  ztCAD_GMDDocument document("Корпус 😀");
  addPoints(document, {"Ё", "零", "a&b", "😀", ""});
  addTemplatePoints(document, {"T"});
  ztCAD_GMDDocument loaded("");
  const FileLoad load = loadBytes(loaded, savedBytes(document));
  EXPECT_EQ(load.code, 0);
  EXPECT_TRUE(load.fault);  // the template point has no center
  EXPECT_EQ(namesIn(loaded.content().points), (Names{"Ё", "零", "a&b", "😀", ""}));
  EXPECT_EQ(namesIn(loaded.content().templatePoints), Names{"T"});
  EXPECT_EQ(loaded.header().inform(), QString("Корпус 😀"));
  EXPECT_EQ(savedBytes(loaded), savedBytes(document));
}

TEST(Saving, LineEndsAreThoseOfTheSystemAndAnyAreRead) {
#if defined(_WIN32)
  const std::string lineEnd = "\r\n";
  const std::string other = "\n";
#else
  const std::string lineEnd = "\n";
  const std::string other = "\r\n";
#endif
  const auto textWith = [](const std::string& end) {
    return R"(<?xml version="1.0" encoding="windows-1251"?>)" + end + "<GMD>" + end +
           R"(   <header inform="&#xd;&#xa;"/>)" + end + "</GMD>" + end;
  };
  const TemporaryFiles files;
  ztCAD_GMDDocument document("\r\n");
  document.saveToFile(files.path("document.xml"));
  EXPECT_EQ(bytesOf(files.path("document.xml")), textWith(lineEnd));
  for (const std::string& end : {lineEnd, other}) {
    ztCAD_GMDDocument loaded("");
    EXPECT_EQ(loadBytes(loaded, textWith(end)).code, 0);
    EXPECT_EQ(loaded.header().inform(), QString("\r\n"));
    EXPECT_EQ(savedBytes(loaded), savedBytes(document));
  }
}

TEST(Saving, DoesNotChangeTheLoadedTree) {
  ztCAD_GMDDocument document("");
  loadString(document, "<GMD><x/></GMD>");
  const std::string before = document.xmlText();
  addPoints(document, {"A"});
  savedBytes(document);
  EXPECT_EQ(document.xmlText(), before);
}

TEST(Saving, AFileNameCanContainAnyScript) {
  for (const char* name : {"деталь № 5.xml", "零件.xml", "a b%1.xml", "😀.xml"}) {
    const TemporaryFiles files;
    ztCAD_GMDDocument document("");
    document.saveToFile(files.path(name));
    EXPECT_EQ(files.names(), Names{name});
    ztCAD_GMDDocument loaded("");
    EXPECT_EQ(loadFile(loaded, files.path(name)).code, 0) << name;
  }
}

TEST(Saving, ToAnEmptyNameOrAMissingFolderDoesNothing) {
  const TemporaryFiles files;
  ztCAD_GMDDocument document("");
  document.saveToFile("");
  document.saveToFile(files.path("absent/document.xml"));
  EXPECT_EQ(files.names(), Names{});
}

TEST(Saving, ReplacesAnEarlierFileCompletely) {
  const TemporaryFiles files;
  files.put("document.xml", std::string(100000, 'x'));
  ztCAD_GMDDocument document("");
  document.saveToFile(files.path("document.xml"));
  EXPECT_EQ(textBytesOf(files.path("document.xml")), saved("   <header inform=\"\"/>\n"));
}

TEST(Saving, WritesManyElements) {
  constexpr int count = 20000;  // several megabytes, so that the output is written in many pieces
  ztCAD_GMDDocument document("");
  std::string lines = "   <header inform=\"\"/>\n";
  for (int i = 0; i < count; ++i) {
    const std::string name = "P" + std::to_string(i);
    document.content().points.add(pointNamed(name));
    lines += pointLine("point", name);
  }
  EXPECT_TRUE(savedBytes(document) == saved(lines));
}

}  // namespace
