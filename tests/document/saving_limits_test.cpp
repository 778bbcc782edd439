#include <gtest/gtest.h>
#include <list>
#include <QFileDevice>
#include <string>

#include "core/document/saving.h"
#include "sample_documents.h"

// What was saved loads again: a document that would be refused as a file is refused when it is saved.

namespace {

/// A line or solid without content, as the innermost of `levels` nested elements.
std::string nested(const std::string& element, int levels) {
  std::string open;
  std::string close;
  for (int level = 2; level < levels; ++level) {
    open += "<structure name='S'>";
    close += "</structure>";
  }
  return "<GMD>" + open + element + close + "</GMD>";
}

class SavingLimits : public testing::Test {
 protected:
  ztcad::FileError save(ztCAD_GMDDocument& document) const { return ztcad::saveDocument(document, target); }

  TemporaryFiles files;
  const std::string target = files.put("document.xml", "earlier");
};

// These elements are written with children, which they need not have when they are read.
TEST_F(SavingLimits, ADocumentThatWouldBecomeTooDeepIsRefused) {
  for (const char* const element :
       {"<line name='L' method='polyline'/>", "<solid name='T' method='triangulation'/>"}) {
    ztCAD_GMDDocument document("");
    EXPECT_TRUE(loadBytes(document, nested(element, 256)).read) << element;
    const ztcad::FileError error = save(document);
    EXPECT_EQ(error.code, QFileDevice::WriteError) << element;
    EXPECT_EQ(error.message, QLatin1String("elements nested deeper than 256 would not be loaded again"));
    EXPECT_EQ(bytesOf(target), "earlier") << element;
    EXPECT_EQ(files.names(), Names{"document.xml"}) << element;
  }
}

TEST_F(SavingLimits, TheDeepestDocumentThatLoadsAgainIsSaved) {
  for (const char* const element :
       {"<line name='L' method='polyline'/>", "<solid name='T' method='triangulation'/>"}) {
    ztCAD_GMDDocument document("");
    EXPECT_TRUE(loadBytes(document, nested(element, 255)).read) << element;
    EXPECT_EQ(save(document).code, 0) << element;
    ztCAD_GMDDocument again("");
    EXPECT_TRUE(loadFile(again, target).read) << element;
  }
}

/// A document of 2^levels paths to the innermost structure, which takes little memory. All of its structures
/// have long names, so that the text grows quickly.
class SharedStructures {
 public:
  explicit SharedStructures(int levels) {
    ztCAD_commonStructure* outer = &m_document.content().structures.appendNew();
    for (int level = 0; level < levels; ++level) {
      ztCAD_Structure& inner = m_inner.emplace_back();
      inner.setName(QString(100000, 'n'));
      EXPECT_FALSE(outer->addStructure(inner));
      EXPECT_FALSE(outer->addStructure(inner));
      outer = &inner;
    }
  }
  ztCAD_GMDDocument& document() { return m_document; }

 private:
  ztCAD_GMDDocument m_document{""};
  std::list<ztCAD_Structure> m_inner;
};

#if !defined(_WIN32)
// A device is written directly, but only after the text has been produced once.
TEST_F(SavingLimits, ATextThatIsLongerThanAnyFileThatLoadsIsRefusedSoon) {
  SharedStructures shared(200);
  const ztcad::FileError error = ztcad::saveDocument(shared.document(), "/dev/null");
  EXPECT_EQ(error.code, QFileDevice::WriteError);
  EXPECT_EQ(error.message, QLatin1String("the text is too long to be loaded again"));
}
#endif

TEST_F(SavingLimits, SharedStructuresThatFitAreSaved) {
  SharedStructures shared(5);
  EXPECT_EQ(save(shared.document()).code, 0);
  ztCAD_GMDDocument again("");
  EXPECT_EQ(loadFile(again, target).code, 0);
}

}  // namespace
