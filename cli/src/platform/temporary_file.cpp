#include "temporary_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "../failure.h"
#include "file_names.h"
#include "open_temporary_file.h"

namespace cli {

TemporaryFile::TemporaryFile() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) throw Failure("There is no folder for temporary files: " + error.message());
  m_file = openTemporaryFile(nameOf(folder), m_name);
  if (!m_file)
    throw Failure("Cannot make a temporary file in " + nameOf(folder) + ": " + std::strerror(errno));
}

TemporaryFile::~TemporaryFile() {
  if (m_file) std::fclose(m_file);
  std::error_code ignored;
  std::filesystem::remove(pathOf(m_name), ignored);
}

void TemporaryFile::fillFrom(std::FILE* stream) {
  std::array<char, 65536> buffer{};
  errno = 0;
  while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), stream))
    if (std::fwrite(buffer.data(), 1, size, m_file) != size)
      throw Failure("Cannot write the temporary file " + m_name + ": " + std::strerror(errno));
  if (std::ferror(stream)) throw Failure(std::string("Cannot read the input: ") + std::strerror(errno));
  if (std::fflush(m_file) != 0)
    throw Failure("Cannot write the temporary file " + m_name + ": " + std::strerror(errno));
}

}  // namespace cli
