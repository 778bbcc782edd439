# Writes the pages of the rules into a C++ source. Run by the build:
#
#   cmake -D PAGES=<folder> -D OUTPUT=<source> -P embed_rule_pages.cmake

file(GLOB pages ${PAGES}/*.md)
list(SORT pages)
set(entries "")
foreach(page IN LISTS pages)
  get_filename_component(rule ${page} NAME_WE)
  file(READ ${page} text)
  string(APPEND entries "    {\"${rule}\", R\"ztcad(${text})ztcad\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"rules/rule_pages.h\"

#include <utility>
#include <vector>

namespace cli {

std::string_view rulePage(std::string_view rule) {
  static const std::vector<std::pair<std::string_view, std::string_view>> pages{
${entries}  };
  for (const auto& [name, page] : pages)
    if (name == rule) return page;
  return {};
}

}  // namespace cli
")
