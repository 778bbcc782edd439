#pragma once

#include <string>
#include <string_view>

#include "../convert/output_file.h"

namespace cli {

/// Writes bytes to a file as text: five digits for four bytes, a quarter more than the bytes (Base64: a
/// third). The digits are those of RFC 1924 with ",", "." and "/" in place of "<", "&" and ">", so that the
/// text never looks like markup. The last one to three bytes take one digit more than they are.
class Base85 {
 public:
  explicit Base85(OutputFile& file) : m_file(file) {}

  void write(std::string_view bytes);
  /// Writes what is left. Call it once, at the end.
  void finish();

 private:
  OutputFile& m_file;
  std::string m_rest;  // fewer than four bytes
};

}  // namespace cli
