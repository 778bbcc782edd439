#pragma once

#include <array>
#include <string>
#include <string_view>

namespace cli {

/// The page that `view` fills, as it was when the program was built; empty if it was built without.
std::string viewerPage();

/// A page with three places, each "<!--ztcad:NAME-->", in this order.
class PageText {
 public:
  /// @param page outlives the object. Throws `Failure` if a place is missing
  explicit PageText(std::string_view page);

  std::string_view beforeTitle() const { return m_parts[0]; }
  std::string_view beforeDocument() const { return m_parts[1]; }
  std::string_view beforeScene() const { return m_parts[2]; }
  std::string_view end() const { return m_parts[3]; }

 private:
  std::array<std::string_view, 4> m_parts;
};

/// A text as content of an element of HTML.
std::string htmlText(std::string_view text);

}  // namespace cli
