#pragma once

#include <functional>
#include <QByteArray>
#include <QString>

#include "../../xml/xml_writer.h"

namespace ztcad {

/// Why the system did not read or write a file.
struct FileError {
  int code = 0;     ///< a `QFile::FileError`; 0: all is well
  QString message;  ///< the system's words, in the language of the process; empty where all is well
};

/// Writes a text file in such a way that its name always leads to a whole file: `write` fills a temporary
/// file beside the target, which replaces the target at the end. Whatever goes wrong before leaves the target
/// as it was.
///
/// Written directly instead: a target that is no regular file (a pipe, a device), one with several hard links
/// (they would part), and one whose temporary file or replacement the system refuses.
FileError writeTextFile(const QString& fileName, const std::function<void(ByteOutput&)>& write);

/// Reads all bytes of a file.
FileError readFile(const QString& fileName, QByteArray& bytes);

}  // namespace ztcad
