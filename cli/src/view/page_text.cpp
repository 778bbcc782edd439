#include "page_text.h"

#include "../failure.h"

namespace cli {

PageText::PageText(std::string_view page) {
  std::size_t part = 0;
  for (const char* const name : {"title", "document", "scene"}) {
    const std::string place = std::string("<!--ztcad:") + name + "-->";
    const std::size_t at = page.find(place);
    if (at == std::string_view::npos)
      throw Failure(std::string("the page has no place for \"") + name + "\"");
    m_parts.at(part++) = page.substr(0, at);
    page.remove_prefix(at + place.size());
  }
  m_parts.at(part) = page;
}

std::string htmlText(std::string_view text) {
  std::string html;
  for (const char character : text) {
    if (character == '&')
      html += "&amp;";
    else if (character == '<')
      html += "&lt;";
    else if (character == '>')
      html += "&gt;";
    else
      html += character;
  }
  return html;
}

}  // namespace cli
