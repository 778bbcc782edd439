#pragma once

#include <gtest/gtest.h>

#include <string>

/// Whether a text is JSON that a schema accepts. The message says where not.
testing::AssertionResult validates(const std::string& text, const std::string& schemaFile);

/// The committed schema of an output: such as "check".
inline std::string schemaOf(const std::string& command) {
  return std::string(ZTCAD_TEST_PAGES) + "/" + command + ".schema.json";
}
