# Writes the page that "ztcad view" fills into a C++ source. Run by the build:
#
#   cmake -D PAGE=<page.html, or empty> -D OUTPUT=<source> -P embed_page.cmake
#
# The page is split, because compilers limit the length of a string literal.

set(pieces "")
if(PAGE)
  file(READ ${PAGE} text)
  string(LENGTH "${text}" length)
  set(piece_length 8000)
  set(start 0)
  while(start LESS length)
    string(SUBSTRING "${text}" ${start} ${piece_length} piece)
    string(APPEND pieces "      R\"ztcad(${piece})ztcad\",\n")
    math(EXPR start "${start} + ${piece_length}")
  endwhile()
endif()
file(WRITE ${OUTPUT} "#include \"view/page_text.h\"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

std::string viewerPage() {
  const std::vector<std::string_view> pieces{
${pieces}  };
  std::string page;
  for (const std::string_view piece : pieces)
    page += piece;
  return page;
}

}  // namespace cli
")
