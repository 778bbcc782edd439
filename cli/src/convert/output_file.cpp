#include "output_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "../failure.h"
#include "../input_file.h"
#include "../platform/file_names.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

template <std::size_t Size>
void appendLittleEndian(std::string& buffer, std::uint64_t bits) {
  for (std::size_t i = 0; i < Size; ++i)
    buffer += static_cast<char>(bits >> (8 * i) & 0xFFU);
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : m_name(name), m_isStandardOutput(name == standardStream) {
  if (m_isStandardOutput) return;
  std::error_code error;
  const fs::file_type type = fs::symlink_status(pathOf(name), error).type();
  if (type == fs::file_type::not_found || type == fs::file_type::regular) m_temporaryName = name + ".part";
  errno = 0;
  m_file.open(pathOf(m_temporaryName.empty() ? name : m_temporaryName), std::ios::binary | std::ios::trunc);
  if (!m_file) {
    m_temporaryName.clear();
    fail();
  }
}

OutputFile::~OutputFile() {
  if (m_temporaryName.empty()) return;
  m_file.close();
  std::error_code ignored;
  fs::remove(pathOf(m_temporaryName), ignored);
}

void OutputFile::write(std::string_view bytes) {
  m_buffer += bytes;
  constexpr std::size_t piece = 1 << 20;
  if (m_buffer.size() >= piece) flush();
}

void OutputFile::write(std::uint32_t value) {
  appendLittleEndian<4>(m_buffer, value);
  write(std::string_view());
}

void OutputFile::write(float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  write(bits);
}

void OutputFile::write(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  appendLittleEndian<8>(m_buffer, bits);
  write(std::string_view());
}

void OutputFile::flush() {
  errno = 0;
  if (m_isStandardOutput)
    Output().write(m_buffer);
  else if (!m_file.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size())))
    fail();
  m_buffer.clear();
}

void OutputFile::commit() {
  flush();
  if (m_isStandardOutput) {
    Output().flush();
    return;
  }
  m_file.close();
  if (!m_file) fail();
  if (m_temporaryName.empty()) return;
  std::error_code error;
  fs::rename(pathOf(m_temporaryName), pathOf(m_name), error);
  if (error) throw Failure(m_name + ": " + error.message());
  m_temporaryName.clear();
}

void OutputFile::fail() const {
  throw Failure(m_name + ": " + (errno != 0 ? std::strerror(errno) : "cannot be written"));
}

}  // namespace cli
