#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <limits>
#include <QString>
#include <string>
#include <string_view>

#include "../../text/text_bytes.h"
#include "../../xml/xml_writer.h"

namespace ztcad {

/// A file name in the system's own characters.
#if defined(_WIN32)
using FileName = std::wstring;  // UTF-16
#else
using FileName = std::string;  // any bytes but NUL; nothing is decoded, so different names stay different
#endif

/// The system's form of a file name that a host passes. Windows: UTF-8, else the system's narrow encoding.
/// Other systems: the bytes as they are.
FileName fileNameOf(std::string_view hostName);

/// Size of the longest file that is read or written: what memory can hold.
constexpr std::size_t longestFile = std::numeric_limits<std::ptrdiff_t>::max() / 2;

/// The result of reading or writing a file.
struct FileError {
  int code = 0;     ///< a `QFile::FileError`; 0 for success
  QString message;  ///< the system's message, in the language of the process; empty for success
};

/// Writes a text piece by piece. It may be called more than once and must produce the same text each time.
using WriteText = std::function<void(ByteOutput&)>;

/// Thrown by a `WriteText` that cannot produce its text; the message becomes that of the failed save.
class TextRefused final : public std::exception {
 public:
  explicit TextRefused(const char* message) : m_message(message) {}
  const char* what() const noexcept override { return m_message; }

 private:
  const char* m_message;
};

/// Writes a text file in one step: `write` fills a temporary file beside the target, which is synchronised
/// with the disk and then replaces the target. Any failure before that, one of the synchronisation included,
/// leaves the target unchanged and no temporary file. Exceptions other than `TextRefused` are passed on.
///
/// The new file has the owner, permissions and extended attributes of the earlier one (on Windows those of a
/// new file). Symbolic links are followed.
///
/// The target is written directly, without this guarantee, if there is evidence that it must not or cannot be
/// replaced: it is not a regular file, or has several hard links (replacing it would separate them), or is a
/// mount point, or the process lacks the right to create a file beside it, to replace it, or to give the new
/// file the owner, permissions or attributes of the earlier one. Even then the target is opened only after
/// `write` has produced the whole text once.
///
/// Lines end as text files of the system do: CR LF on Windows, otherwise LF. A pipe without a reader is an
/// error. No signal reaches the host.
///
/// @param longest greatest size of the file in bytes; a longer text is refused
FileError writeTextFile(const FileName& fileName, std::size_t longest, const WriteText& write);

/// Passes a text on with the system's line ends. An error of `output` must be a `TextRefused`.
FileError writeText(ByteOutput& output, std::size_t longest, const WriteText& write);

/// What became of reading a file.
enum class ReadOutcome {
  Done,
  Missing,  ///< there is no such file
  TooLong,  ///< it holds more bytes than asked for
  Failed,   ///< see the error
};

/// The bytes of a file, or why there are none.
struct FileBytes {
  explicit FileBytes(ReadOutcome result) : outcome(result) {}

  ReadOutcome outcome;
  TextBytes bytes;
  FileError error;
};

/// Reads all bytes of a regular file. Everything else (a folder, a pipe, a device) is refused without being
/// opened, because reading it may never end.
FileBytes readFile(const FileName& fileName, std::size_t longest);

}  // namespace ztcad
