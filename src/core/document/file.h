#pragma once

#include <functional>
#include <QByteArray>
#include <QString>

#include "../../xml/xml_writer.h"

namespace ztcad {

/// The result of reading or writing a file.
struct FileError {
  int code = 0;     ///< a `QFile::FileError`; 0 for success
  QString message;  ///< the system's message, in the language of the process; empty for success
};

/// Writes a text file in one step: `write` fills a temporary file beside the target, which replaces the
/// target at the end. Any failure before that leaves the target unchanged.
///
/// A target is written directly if it is not a regular file (a pipe, a device), if it has several hard links
/// (replacing it would separate them), or if the system refuses the temporary file or the replacement.
FileError writeTextFile(const QString& fileName, const std::function<void(ByteOutput&)>& write);

/// Reads all bytes of a file.
FileError readFile(const QString& fileName, QByteArray& bytes);

}  // namespace ztcad
