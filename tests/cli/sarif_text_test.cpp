#include <gtest/gtest.h>
#include <platform/file_names.h>
#include <report/sarif_text.h>

TEST(SarifUri, IsRelativeAndPercentEncoded) {
  const struct Row {
    const char* file;
    const char* uri;
  } rows[] = {
    {"rig.xml", "rig.xml"},
    {"parts/a b.xml", "parts/a%20b.xml"},
    {"../up.xml", "../up.xml"},
    {"100%.xml", "100%25.xml"},
    {"a:b#c?d.xml", "a%3Ab%23c%3Fd.xml"},
    {"ось.xml", "%D0%BE%D1%81%D1%8C.xml"},
#if !defined(_WIN32)
    {"\xff.xml", "%FF.xml"},
#endif
    {"-", "-"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(cli::sarifUri(row.file), row.uri);
}

TEST(SarifUri, IsRelativeForFullPathsInTheCurrentFolder) {
  const std::string folder = cli::nameOf(std::filesystem::current_path());
  EXPECT_EQ(cli::sarifUri(folder + "/parts/a.xml"), "parts/a.xml");
  EXPECT_EQ(cli::sarifUri(folder + "elsewhere/a.xml").substr(0, 8), "file:///");
}

TEST(SarifMessage, DoublesBraces) { EXPECT_EQ(cli::sarifMessage("a {0} b"), "a {{0}} b"); }

TEST(RegionLength, IsThatOfTheTagOrOfTheAttribute) {
  cli::Finding finding;
  EXPECT_EQ(cli::regionLength(finding), 1);
  finding.path = "/GMD/structure[1]/point[2]";
  EXPECT_EQ(cli::regionLength(finding), 6);  // <point
  finding.path = "/GMD/ось[1]";
  EXPECT_EQ(cli::regionLength(finding), 4);
  finding.path = "/GMD/point[2]/@center";
  finding.attribute = "center";
  EXPECT_EQ(cli::regionLength(finding), 6);
}
