#include <gtest/gtest.h>
#include <new>
#include <QFileDevice>
#include <string>

#include "written_files.h"

#if defined(_WIN32)
#include <windows.h>
#endif

using ztcad::ReadOutcome;

namespace {

class FileWriting : public testing::Test {
 protected:
  TemporaryFiles files;
  const std::string target = files.path("document.xml");
};

TEST_F(FileWriting, ANewFileHoldsTheBytesAndNoTemporaryFileIsLeft) {
  for (const std::string& bytes : {std::string(), std::string("a\n"), std::string("a\0\r\n\xFF", 5)}) {
    EXPECT_TRUE(write(target, bytes));
    EXPECT_EQ(textBytesOf(target), bytes);
    EXPECT_EQ(files.names(), Names{"document.xml"});
  }
}

TEST_F(FileWriting, PiecesAreConcatenated) {
  std::string all;
  EXPECT_TRUE(writeWith(target, [&all](ztcad::ByteOutput& output) {
    for (int i = 0; i < 20000; ++i) {
      const std::string piece = std::to_string(i) + '\n';
      output.write(piece);
      all += piece;
    }
  }));
  EXPECT_TRUE(textBytesOf(target) == all);
}

TEST_F(FileWriting, TheEarlierFileStaysCompleteUntilTheEnd) {
  putBytes(target, "earlier");
  EXPECT_TRUE(writeWith(target, [this](ztcad::ByteOutput& output) {
    output.write(std::string(1000000, 'n'));
    EXPECT_EQ(bytesOf(target), "earlier");
  }));
  EXPECT_EQ(bytesOf(target), std::string(1000000, 'n'));
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(FileWriting, AnExceptionLeavesTheEarlierFile) {
  putBytes(target, "earlier");
  const auto writeAndThrow = [](ztcad::ByteOutput& output) {
    output.write(std::string(1000000, 'n'));
    throw std::bad_alloc();
  };
  EXPECT_THROW(writeWith(target, writeAndThrow), std::bad_alloc);
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
  EXPECT_THROW(writeWith(files.path("new.xml"), writeAndThrow), std::bad_alloc);
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

TEST_F(FileWriting, APathThatCannotBeAFileFails) {
  EXPECT_FALSE(write("", "x"));
  EXPECT_FALSE(write(files.folder(), "x"));
  EXPECT_FALSE(write(files.folder() + '/', "x"));
  EXPECT_FALSE(write(files.path("absent/document.xml"), "x"));
  EXPECT_EQ(files.names(), Names{});
}

TEST_F(FileWriting, ANameThatContainsANulFails) {
  putBytes(target, "earlier");
  EXPECT_FALSE(write(target + std::string("\0.xml", 5), "x"));
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

#if defined(_WIN32)

TEST_F(FileWriting, HardLinksAreKept) {
  putBytes(target, "earlier and longer");
  const std::string other = files.path("other.xml");
  ASSERT_TRUE(CreateHardLinkA(other.c_str(), target.c_str(), nullptr));
  EXPECT_TRUE(write(target, "x"));
  EXPECT_EQ(bytesOf(other), "x");
  EXPECT_EQ(files.names(), (Names{"document.xml", "other.xml"}));
}

#endif

TEST_F(FileWriting, ATextThatExceedsTheLimitIsRefused) {
  constexpr std::size_t longest = 100000;
  const auto writeMany = [&](std::size_t lines) {
    return ztcad::writeTextFile(ztcad::fileNameOf(target), longest, [lines](ztcad::ByteOutput& output) {
      for (std::size_t line = 0; line < lines; ++line)
        output.write("123456789");
    });
  };
  putBytes(target, "earlier");
  const ztcad::FileError error = writeMany(11112);
  EXPECT_EQ(error.code, QFileDevice::WriteError);
  EXPECT_EQ(error.message, QLatin1String("the text is too long to be loaded again"));
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
  EXPECT_EQ(writeMany(11111).code, 0);
  EXPECT_EQ(bytesOf(target).size(), 99999U);
}

TEST_F(FileWriting, LineEndsCountAsTheyAreInTheFile) {
  constexpr std::size_t longest = 10;
#if defined(_WIN32)
  constexpr int mostLines = 5;
#else
  constexpr int mostLines = 10;
#endif
  const auto writeLines = [&](int lines) {
    return ztcad::writeTextFile(ztcad::fileNameOf(target), longest, [lines](ztcad::ByteOutput& output) {
      for (int line = 0; line < lines; ++line)
        output.write("\n");
    });
  };
  EXPECT_EQ(writeLines(mostLines).code, 0);
  EXPECT_NE(writeLines(mostLines + 1).code, 0);
}

TEST_F(FileWriting, ATextThatIsRefusedGivesItsReason) {
  putBytes(target, "earlier");
  const ztcad::FileError error =
      ztcad::writeTextFile(ztcad::fileNameOf(target), 10, [](ztcad::ByteOutput& output) {
        output.write("x");
        throw ztcad::TextRefused("for a reason");
      });
  EXPECT_EQ(error.code, QFileDevice::WriteError);
  EXPECT_EQ(error.message, QLatin1String("for a reason"));
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(files.names(), Names{"document.xml"});
}

// --------------------------------------------------------------------------------------------------- reading

TEST(FileReading, ReturnsTheBytesUnchanged) {
  const TemporaryFiles files;
  for (const std::string& bytes : {std::string(), std::string("a\r\nb\rc\n\0\x1a\xEF\xBB\xBF", 12)}) {
    const ztcad::FileBytes file = read(files.put("file", bytes));
    EXPECT_EQ(file.outcome, ReadOutcome::Done);
    EXPECT_EQ(file.bytes.view(), bytes);
  }
}

TEST(FileReading, ReportsAMissingFile) {
  const TemporaryFiles files;
  const std::string names[] = {"", files.path("absent"), files.path("absent/file"), std::string("\0", 1),
                               files.put("file", "") + std::string("\0", 1)};
  for (const std::string& name : names)
    EXPECT_EQ(read(name).outcome, ReadOutcome::Missing) << name;
}

TEST(FileReading, AFolderYieldsTheErrorOfQFile) {
  const TemporaryFiles files;
  const ztcad::FileBytes file = read(files.folder());
  EXPECT_EQ(file.outcome, ReadOutcome::Failed);
  EXPECT_EQ(file.error.code, QFileDevice::OpenError);
  EXPECT_FALSE(file.error.message.isEmpty());
  EXPECT_EQ(file.bytes.view(), "");
}

TEST(FileReading, RefusesMoreBytesThanAskedFor) {
  const TemporaryFiles files;
  const auto name = ztcad::fileNameOf(files.put("file", "12345"));
  EXPECT_EQ(ztcad::readFile(name, 4).outcome, ReadOutcome::TooLong);
  EXPECT_EQ(ztcad::readFile(name, 5).bytes.view(), "12345");
}

}  // namespace
