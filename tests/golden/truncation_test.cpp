#include <gtest/gtest.h>
#include <QDir>
#include <QDomDocument>
#include <string>

#include "api/host.h"
#include "recorded_answers.h"

// Every document of this folder, truncated at many positions.

namespace {

const std::string folder = ZTCAD_TEST_GOLDEN_FOLDER;

/// What Qt accepts, if it can be asked.
bool qtMayParse(const std::string& bytes) {
  return !qtIsTheReference ||
         QDomDocument().setContent(QByteArray(bytes.data(), static_cast<int>(bytes.size())));
}

void loadAsFile(const TemporaryFiles& files, const std::string& bytes, Sum& answers) {
  const Loaded loaded = loadFile(files.put("cut.xml", bytes));
  ASSERT_NE(loaded.document, nullptr);
  ASSERT_TRUE(loaded.code == 0 || loaded.code == 110 || loaded.code == 120) << loaded.code;
  ASSERT_TRUE(loaded.code == 110 || qtMayParse(bytes)) << loaded.code;
  answers.add(std::to_string(loaded.code));
}

void loadAsString(const std::string& bytes, Sum& answers) {
  const Parsed parsed = parse(bytes);
  ASSERT_NE(parsed.document, nullptr);
  ASSERT_EQ(parsed.message.empty(), parsed.parsed) << parsed.message;
  if (parsed.parsed) {
    ASSERT_EQ(parsed.line, 0);
    ASSERT_EQ(parsed.column, 0);
  } else {
    ASSERT_GE(parsed.line, 0);
    ASSERT_GE(parsed.column, 0);
  }
  // the document left by a failed parse is a complete object
  ASSERT_FALSE(textOf(parsed.document.get()).empty());
  answers.add(parsed.message).add(std::to_string(parsed.line)).add(std::to_string(parsed.column));
  answers.add(textOf(parsed.document.get()));
}

TEST(TruncatedDocuments, LoadWithADefinedCodeAndMessage) {
  const TemporaryFiles files;
  RecordedAnswers recorded("truncated_documents");
  std::size_t cut = 0;
  for (const QString& file : QDir(QString::fromStdString(folder)).entryList({"*.xml"}, QDir::Files)) {
    const std::string whole = bytesOf(folder + '/' + file.toStdString());
    constexpr std::size_t maxPositions = 300;  // per document; longer documents are sampled
    const std::size_t step = 1 + whole.size() / maxPositions;
    Sum answers;
    for (std::size_t size = 0; size < whole.size(); size += step) {
      SCOPED_TRACE(file.toStdString() + " cut after " + std::to_string(size) + " bytes");
      ASSERT_NO_FATAL_FAILURE(loadAsFile(files, whole.substr(0, size), answers));
      ASSERT_NO_FATAL_FAILURE(loadAsString(whole.substr(0, size), answers));
      ++cut;
    }
    recorded.expect(file.toStdString(), answers.text());
  }
  recorded.finish();
  EXPECT_GT(cut, 10000U);
}

}  // namespace
