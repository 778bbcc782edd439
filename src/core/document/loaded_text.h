#pragma once

#include <QByteArray>
#include <string>
#include <utility>

#include "../../xml/xml_text.h"

namespace ztcad {

/// The text that a document was loaded from, as its bytes.
class LoadedText {
 public:
  /// Nothing was loaded: an empty text.
  LoadedText() = default;
  LoadedText(QByteArray bytes, XmlBytes kind) : m_bytes(std::move(bytes)), m_kind(kind) {}

  /// What the text holds, printed in UTF-8.
  std::string printed(int indent) const;

 private:
  QByteArray m_bytes;
  XmlBytes m_kind = XmlBytes::AsDeclared;
};

}  // namespace ztcad
