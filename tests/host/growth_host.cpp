// Gives hostile texts of a chosen size to the functions that take text. check_growth counts the instructions.
//
//   growth_host --list          names of the cases
//   growth_host <case> <size>

#include <ztCAD/ztCAD.h>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::string repeated(const std::string& piece, int times) {
  std::string text;
  for (int i = 0; i < times; ++i)
    text += piece;
  return text;
}

std::string numbered(const std::string& before, const std::string& after, int times) {
  std::string text;
  for (int i = 0; i < times; ++i)
    text += before + std::to_string(1000000 + i) + after;
  return text;
}

/// Reviews a text, loads it and prints it.
void load(const std::string& xml) {
  ztCAD_Outcome outcome;
  ztCAD_endReview(ztCAD_reviewText(xml.data(), static_cast<std::int64_t>(xml.size()), 100, &outcome));
  bool parsed = false;
  std::string text;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document = crtGMDDocumentFromStdString(xml, parsed, text, line, column);
  GMDDocumentToString(document, text, false);
  GMDDocumentToString(document, text, true);
  DeleteGMDDoc(document);
}

void correct(const std::string& name) {
  std::string corrected;
  doCorrectName(name, corrected, "");
}

struct Case {
  const char* name;
  std::function<void(int size)> run;
};

const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      {"declaration", [](int n) { load("<?xml " + repeated("encoding", n) + "\x98"); }},
      {"attributes",
       [](int n) { load("<!DOCTYPE GMD><GMD><point " + numbered("a", "='1' ", n) + "/></GMD>"); }},
      {"attributes_of_a_plain_text",
       [](int n) { load("<GMD><point " + numbered("a", "='1' ", n) + "/></GMD>"); }},
      {"one_attribute", [](int n) { load("<!DOCTYPE GMD><GMD " + repeated("a='1' ", n) + "/>"); }},
      {"open_value", [](int n) { load("<?p a?b?><GMD a='" + repeated("&lt;", n)); }},
      {"notations",
       [](int n) { load("<!DOCTYPE GMD [" + numbered("<!NOTATION n", " SYSTEM 's'>", n) + "]><GMD/>"); }},
      {"document_types", [](int n) { load(repeated("<!DOCTYPE GMD [<!ELEMENT GMD ANY>]>", n) + "<GMD/>"); }},
      {"parameter_references", [](int n) { load("<!DOCTYPE GMD [" + repeated("%p;", n) + "]><GMD/>"); }},
      {"entity_references", [](int n) { load("<GMD>" + repeated("&x;", n) + "</GMD>"); }},
      {"numeric_references", [](int n) { load("<?p a?b?><GMD>" + repeated("&#32;", n) + "</GMD>"); }},
      {"brackets", [](int n) { load("<?p a?b?><GMD>" + repeated("]]", n) + "</GMD>"); }},
      {"comments", [](int n) { load("<GMD>" + repeated("<!---->t", n) + "</GMD>"); }},
      {"open_comments", [](int n) { load("<GMD>" + repeated("<!--", n)); }},
      {"cdata",
       [](int n) {
         load("<GMD><line method='polyline'><vertices>" + repeated("<![CDATA[1,2]]>,3,", n) +
              "</vertices></line></GMD>");
       }},
      {"instructions", [](int n) { load("<?p a?b?>" + repeated("<?p ?>", n) + "<GMD/>"); }},
      {"instructions_of_a_plain_text", [](int n) { load(repeated("<?p ?>", n) + "<GMD/>"); }},
      {"siblings",
       [](int n) { load("<?p a?b?><GMD>" + repeated("<point name='p' center='1,2,3'/>", n) + "</GMD>"); }},
      {"siblings_of_a_plain_text",
       [](int n) { load("<GMD>" + repeated("<point name='p' center='1,2,3'/>", n) + "</GMD>"); }},
      {"findings",
       [](int n) {
         load("<GMD>" + numbered("<x", " a='' a='' b=''>t</x><point name='p' a=''/>", n) + "</GMD>");
       }},
      {"open_elements", [](int n) { load(repeated("<a>", n)); }},
      {"long_name", [](int n) { load("<?p a?b?><GMD><point name='" + repeated("x", n) + "'/></GMD>"); }},
      {"invalid_utf8", [](int n) { load("<GMD a='" + repeated("\xd0\xe0", n) + "'/>"); }},
      {"bad_numbers",
       [](int n) {
         load("<GMD><solid method='triangulation'><vertices>" + repeated("1e,", n) +
              "</vertices></solid></GMD>");
       }},
      {"name_correction", [](int n) { correct(repeated("a!", n)); }},
      {"name_correction_of_other_scripts", [](int n) { correct(repeated("Я→", n)); }},
      {"name_correction_of_invalid_utf8", [](int n) { correct(repeated("\xdf!", n)); }},
  };
  return all;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string(argv[1]) == "--list") {
    for (const Case& one : cases())
      std::cout << one.name << '\n';
    return 0;
  }
  if (argc != 3) return 2;
  for (const Case& one : cases()) {
    if (one.name != std::string(argv[1])) continue;
    one.run(std::atoi(argv[2]));
    return 0;
  }
  return 2;
}
