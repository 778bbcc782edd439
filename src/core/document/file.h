#pragma once

#include <functional>
#include <QByteArray>
#include <QString>

#include "../../xml/xml_writer.h"

namespace ztcad {

/// Writes a text file in such a way that its name always leads to a whole file: `write` fills a temporary
/// file beside the target, which replaces the target at the end. Whatever goes wrong before leaves the target
/// as it was.
///
/// Written directly instead: a target that is no regular file (a pipe, a device), one with several hard links
/// (they would part), and one whose temporary file or replacement the system refuses.
/// @return whether everything was written
bool writeTextFile(const QString& fileName, const std::function<void(ByteOutput&)>& write);

/// @return 0 and all bytes of the file, or the `QFile::FileError` for which it could not be read
int readFile(const QString& fileName, QByteArray& bytes);

}  // namespace ztcad
