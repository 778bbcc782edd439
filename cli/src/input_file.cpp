#include "input_file.h"

namespace cli {

InputFile::InputFile(const std::string& name) : m_name(name) {
  if (name != standardStream) return;
  m_copy = std::make_unique<TemporaryFile>();
  m_copy->fillFrom(stdin);
}

}  // namespace cli
