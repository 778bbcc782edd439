#pragma once

#include <string>

/// Documents of the tests.
inline const char* const goodDocument = R"(<?xml version="1.0" encoding="windows-1251"?>
<GMD>
<header majorVersion="2" minorVersion="1" inform="good"/>
<point name="origin" center="0, 0, 0;"/>
</GMD>
)";

/// An error on line 4, a warning on line 5, a note on line 6.
inline const char* const badDocument = R"(<GMD>
<header majorVersion="2" minorVersion="1" inform="bad"/>
<point name="origin" center="0, 0, 0;"/>
<point name="hinge"/>
<bracket/>
<!-- a note -->
</GMD>
)";

/// A document that takes a while.
inline std::string slowDocument() {
  std::string points;
  for (int i = 0; i < 20000; ++i)
    points += "<point name=\"p" + std::to_string(i) + "\" center=\"0, 0, 0;\"/>\n";
  std::string document = badDocument;
  return document.insert(document.find("<bracket"), points);
}

inline const char* const brokenDocument = "<GMD>\n<point></GMD>\n";
