#include <gtest/gtest.h>

#include <regex>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

const std::string mechanism = R"(<GMD>
<header majorVersion="2" minorVersion="1" inform="first"/>
<point name="a" center="1, 2, 3;" comment="text" color="RGB, 1, 2, 3" visible="1"/>
<point name="b" center="0, 0, 0;"/>
<point name="c" center="0, 0, 1;"/>
<pointRef name="here" template="mark" file="marks.xml" MCS="CS, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1"/>
<solid name="ball" method="sphere" center="0, 0, 0;" radius="3" MIP="MIP, 2, 0, 0, 0, 1, 1, 1, 0, 0, 0"/>
<solid name="plate" method="triangulation">
<vertices>0, 0, 0; 4, 0, 0; 0, 4, 0; 9, 9, 9;</vertices><faces>0, 1, 2; 1, 2, 3;</faces></solid>
<structure name="arm" LCS="CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1">
<structure name="hand" LCS=""><line name="nail" method="polyline"><vertices>0, 0, 0; 1, 1, 1;</vertices></line>
</structure></structure>
</GMD>
)";

/// The document with a part of it replaced.
std::string changed(const std::string& part, const std::string& replacement) {
  std::string document = mechanism;
  const std::size_t position = document.find(part);
  EXPECT_NE(position, std::string::npos) << part;
  return document.replace(position, part.size(), replacement);
}

class Diff : public testing::Test {
 protected:
  ProgramRun diff(const std::string& a, const std::string& b, std::vector<std::string> options = {}) const {
    m_files.put("a.xml", a);
    m_files.put("b.xml", b);
    options.insert(options.begin(), {"diff", "a.xml", "b.xml"});
    return runProgram(options, {"", m_files.folder()});
  }

  /// The lines of text, of a run that found differences. The JSON form has as many differences.
  std::string lines(const std::string& b, const std::vector<std::string>& options = {}) const {
    const ProgramRun run = diff(mechanism, b, options);
    EXPECT_EQ(run.exitCode, run.output.empty() ? 0 : 1);
    EXPECT_EQ(run.errors, "");
    std::vector<std::string> jsonOptions = options;
    jsonOptions.insert(jsonOptions.end(), {"--format", "json"});
    const ProgramRun inJson = diff(mechanism, b, jsonOptions);
    EXPECT_EQ(inJson.exitCode, run.exitCode);
    EXPECT_TRUE(validates(inJson.output, schemaOf("diff")));
    EXPECT_EQ(json::parse(inJson.output).at("differences").size(),
              static_cast<std::size_t>(std::count(run.output.begin(), run.output.end(), '\n')));
    return run.output;
  }

  const TemporaryFiles m_files;
};

std::string points(const std::vector<std::string>& names, const std::string& center = "0, 0, 0;") {
  std::string text = "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/>\n";
  for (const std::string& name : names)
    text += "<point name=\"" + name + "\" center=\"" + center + "\"/>\n";
  return text + "</GMD>";
}

}  // namespace

TEST_F(Diff, OfEqualDocumentsIsEmpty) {
  EXPECT_EQ(lines(mechanism), "");
  EXPECT_EQ(lines(changed("1, 2, 3;", "1.0, 2e0, 3;")), "");
}

TEST_F(Diff, NamesTheElementAndTheField) {
  const struct Row {
    const char* part;
    const char* replacement;
    const char* line;
  } rows[] = {
      {"inform=\"first\"", "inform=\"second\"", R"(header inform: "first" -> "second")"},
      {"minorVersion=\"1\"", "minorVersion=\"2\"", "header minorVersion: 1 -> 2"},
      {"1, 2, 3;", "1, 2, 3.5;", R"(point "a": center: (1, 2, 3) -> (1, 2, 3.5))"},
      {" comment=\"text\"", "", R"(point "a": comment: "text" -> "")"},
      {"RGB, 1, 2, 3", "RGB, 1, 2, 4", R"(point "a": color: (1, 2, 3) -> (1, 2, 4))"},
      {" color=\"RGB, 1, 2, 3\"", "", R"(point "a": color: (1, 2, 3) -> none)"},
      {"visible=\"1\"", "visible=\"0\"", R"(point "a": visible: yes -> no)"},
      {" visible=\"1\"", "", R"(point "a": visible: yes -> none)"},
      {"template=\"mark\"", "template=\"spot\"", R"(point-reference "here": template: "mark" -> "spot")"},
      {"marks.xml", "spots.xml", R"(point-reference "here": template file: "marks.xml" -> "spots.xml")"},
      {"CS, 1,", "CS, 2,",
       R"(point-reference "here": placement: (1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1) -> (2, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1))"},
      {"radius=\"3\"", "radius=\"4\"", R"(sphere "ball": radius: (3) -> (4))"},
      {"MIP, 2, 0,", "MIP, 2, 1,",
       R"(sphere "ball": mass data: (2, 0, 0, 0, 1, 1, 1, 0, 0, 0) -> (2, 1, 0, 0, 1, 1, 1, 0, 0, 0))"},
      {"4, 0, 0; 0, 4, 0;", "4, 0, 0; 0, 4, 0.25;",
       R"(solid "plate": vertices: 1 of 4 differ, by at most 0.25; first [2]: (0, 4, 0) -> (0, 4, 0.25))"},
      {"0, 1, 2; 1, 2, 3;", "0, 1, 2; 3, 2, 1;",
       R"(solid "plate": faces: 1 of 2 differ; first [1]: (1, 2, 3) -> (3, 2, 1))"},
      {"0, 0, 0; 4, 0, 0;", "0, 0, 0; 7, 7, 7; 4, 0, 0;",
       R"(solid "plate": vertices: 4 -> 5 entries; equal are the first 1 and the last 3; [1]: none -> (7, 7, 7))"},
      {"LCS=\"CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1\"", "LCS=\"\"",
       R"(structure "arm": coordinate system: (0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1) -> ())"},
      {"1, 1, 1;", "1, 1, 2;",
       R"(structure "arm" / structure "hand" / line "nail": vertices: 1 of 2 differ, by at most 1; first [1]: (1, 1, 1) -> (1, 1, 2))"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(lines(changed(row.part, row.replacement)), std::string(row.line) + "\n");
}

TEST_F(Diff, ShowsAnInsertedElementAsOneDifference) {
  const std::string inserted =
      changed("<point name=\"b\"", "<point name=\"new\" center=\"0, 0, 0;\"/><point name=\"b\"");
  EXPECT_EQ(lines(inserted), "point \"new\": only in b.xml\n");
  const ProgramRun reverse = diff(inserted, mechanism);
  EXPECT_EQ(reverse.output, "point \"new\": only in a.xml\n");
  EXPECT_EQ(reverse.exitCode, 1);
}

TEST_F(Diff, ShowsOneInsertedAmongElementsOfOneName) {
  const std::string four =
      "<GMD><point name=\"p\" center=\"1, 0, 0;\"/><point name=\"p\" center=\"2, 0, 0;\"/>"
      "<point name=\"p\" center=\"3, 0, 0;\"/><point name=\"p\" center=\"4, 0, 0;\"/></GMD>";
  std::string five = four;
  five.insert(five.find("<point"), "<point name=\"p\" center=\"9, 9, 9;\"/>");
  EXPECT_EQ(diff(four, five).output, "point \"p\": only in b.xml\n");
  EXPECT_EQ(diff(five, four).output, "point \"p\": only in a.xml\n");
}

TEST_F(Diff, ShowsAnotherOrderAsOneDifference) {
  EXPECT_EQ(diff(points({"a", "b", "c", "d"}), points({"d", "a", "b", "c"})).output,
            "order of point: 1 moved: \"d\"\n");
  const ProgramRun run =
      diff(points({"a", "b", "c", "d"}), points({"a", "c", "b", "x"}), {"--format", "json"});
  EXPECT_TRUE(validates(run.output, schemaOf("diff")));
  const json report = json::parse(run.output);
  EXPECT_EQ(report.at("summary"),
            json::parse(R"({"differences": 3, "added": 1, "removed": 1, "moved": 1, "changed": 0})"));
}

TEST_F(Diff, AllowsATolerance) {
  const std::string near = changed("1, 2, 3;", "1, 2, 3.001;");
  EXPECT_NE(lines(near), "");
  EXPECT_EQ(lines(near, {"--tolerance", "0.0011"}), "");
  EXPECT_NE(lines(near, {"--tolerance", "0.0009"}), "");
  EXPECT_EQ(lines(near, {"--relative", "0.0004"}), "");
  EXPECT_NE(lines(near, {"--relative", "0.0003"}), "");
  // near zero only the absolute bound allows anything
  const std::string zero = changed("0, 0, 1;", "1e-9, 0, 1;");
  EXPECT_NE(lines(zero, {"--relative", "0.1"}), "");
  EXPECT_EQ(lines(zero, {"--relative", "0.1", "--tolerance", "1e-9"}), "");
  // indices and colours are no measurements
  EXPECT_NE(lines(changed("RGB, 1,", "RGB, 2,"), {"--tolerance", "9"}), "");
  EXPECT_NE(lines(changed("1, 2, 3;</faces>", "1, 3, 2;</faces>"), {"--tolerance", "9"}), "");
}

TEST_F(Diff, FoldsTheDifferencesOfAList) {
  std::string a = "<GMD><line name=\"l\" method=\"polyline\"><vertices>";
  std::string b = a;
  for (int i = 0; i < 1000; ++i) {
    a += std::to_string(i) + ", 0, 0;";
    b += std::to_string(i) + ", 0, " + (i % 10 == 5 ? std::to_string(i) : "0") + ";";
  }
  for (std::string* text : {&a, &b})
    *text += "</vertices></line></GMD>";
  const ProgramRun run = diff(a, b, {"--format", "json"});
  EXPECT_TRUE(validates(run.output, schemaOf("diff")));
  const json differences = json::parse(run.output).at("differences");
  ASSERT_EQ(differences.size(), 1U);
  EXPECT_EQ(differences[0].at("element"), json::parse(R"([{"kind": "line", "name": "l"}])"));
  EXPECT_EQ(differences[0].at("count"), 100);
  EXPECT_EQ(differences[0].at("greatest"), 995.0);
  EXPECT_EQ(differences[0].at("equalBefore"), 5);
  ASSERT_EQ(differences[0].at("places").size(), 5U);
  EXPECT_EQ(differences[0].at("places")[1],
            json::parse(R"({"index": 15, "a": [15.0, 0.0, 0.0], "b": [15.0, 0.0, 15.0]})"));
}

TEST_F(Diff, SaysThatADocumentHasErrors) {
  const ProgramRun run = diff(goodDocument, badDocument);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.errors, "ztcad: b.xml: the document has errors; only what was read is compared\n");
  EXPECT_EQ(run.output,
            "result: \"well\" -> \"has errors\"\n"
            "header inform: \"good\" -> \"bad\"\n"
            "point \"hinge\": only in b.xml\n");
  EXPECT_EQ(diff(badDocument, badDocument).exitCode, 0);
}

TEST_F(Diff, FailsForAFileThatDoesNotLoad) {
  for (const auto& [a, b] :
       {std::pair(goodDocument, brokenDocument), std::pair(brokenDocument, goodDocument)}) {
    const ProgramRun run = diff(a, b);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.rfind("ztcad: ", 0), 0U) << run.errors;
  }
  EXPECT_EQ(runProgram({"diff", "missing.xml", "missing.xml"}, {"", m_files.folder()}).exitCode, 2);
}

TEST_F(Diff, ReadsStandardInput) {
  m_files.put("a.xml", goodDocument);
  EXPECT_EQ(runProgram({"diff", "a.xml", "-"}, {goodDocument, m_files.folder()}).exitCode, 0);
  EXPECT_EQ(runProgram({"diff", "-", "a.xml"}, {mechanism, m_files.folder()}).exitCode, 1);
}
