#include "file.h"

#include "file_system.h"

namespace ztcad {

namespace {

/// Ends lines as the system does, and refuses a text that becomes too long.
class TextOutput final : public ByteOutput {
 public:
  TextOutput(ByteOutput& output, std::size_t longest) : m_output(output), m_left(longest) {}

  void write(std::string_view bytes) override {
#if defined(_WIN32)
    m_lines.clear();
    for (const char byte : bytes) {
      if (byte == '\n') m_lines += '\r';
      m_lines += byte;
    }
    bytes = m_lines;
#endif
    if (bytes.size() > m_left) throw TextRefused("the text is too long to be loaded again");
    m_left -= bytes.size();
    m_output.write(bytes);
  }

 private:
  ByteOutput& m_output;
  std::size_t m_left;
#if defined(_WIN32)
  std::string m_lines;
#endif
};

/// The system would end such a name at its NUL.
bool hasNul(const FileName& fileName) { return fileName.find(FileName::value_type()) != FileName::npos; }

}  // namespace

FileError FileFailure::error() const {
  if (m_message) return {m_code, QLatin1String(m_message)};
  const auto code = isLackOfResources(m_systemError) ? QFileDevice::ResourceError : m_code;
  return {code, qt_error_string(m_systemError)};
}

FileError writeTextFile(const FileName& fileName, std::size_t longest, const WriteText& write) {
  if (hasNul(fileName)) return {QFileDevice::OpenError, QLatin1String("the file name holds a NUL character")};
  try {
    saveBytes(fileName, [&](ByteOutput& output) {
      TextOutput text(output, longest);
      write(text);
    });
  } catch (const FileFailure& failure) {
    return failure.error();
  } catch (const TextRefused& refusal) {
    return {QFileDevice::WriteError, QLatin1String(refusal.what())};
  }
  return {};
}

FileError writeText(ByteOutput& output, std::size_t longest, const WriteText& write) {
  try {
    TextOutput text(output, longest);
    write(text);
  } catch (const TextRefused& refusal) {
    return {QFileDevice::WriteError, QLatin1String(refusal.what())};
  }
  return {};
}

FileBytes readFile(const FileName& fileName, std::size_t longest) {
  if (hasNul(fileName)) return FileBytes(ReadOutcome::Missing);
  try {
    return loadBytes(fileName, longest);
  } catch (const FileFailure& failure) {
    FileBytes nothing(ReadOutcome::Failed);
    nothing.error = failure.error();
    return nothing;
  }
}

}  // namespace ztcad
