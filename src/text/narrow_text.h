#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace ztcad {

/// How the bytes of a narrow text are taken: as UTF-8, and where they are not valid UTF-8, as a whole as
/// windows-1251, in which every byte is a character (98 hex as U+0098). So no byte of a host's text is lost.
enum class NarrowEncoding { Utf8, Windows1251 };

bool isUtf8(std::string_view bytes);
NarrowEncoding narrowEncodingOf(std::string_view bytes);

/// The text of the bytes, a leading byte order mark included.
QString fromNarrow(std::string_view bytes);

/// UTF-8; an unpaired surrogate, which UTF-8 cannot hold, becomes a question mark.
std::string toNarrow(const QString& text);
/// In the given encoding; what windows-1251 cannot hold becomes a question mark.
std::string toNarrow(const QString& text, NarrowEncoding encoding);

/// A file name of a host: UTF-8, else the system's narrow encoding.
QString fileNameFromNarrow(std::string_view bytes);

}  // namespace ztcad
