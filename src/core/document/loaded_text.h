#pragma once

#include <QByteArray>
#include <string>
#include <utility>

#include "../../xml/xml_text.h"

namespace ztcad {

/// The text that a document was loaded from: its bytes, or its characters if these were a copy.
class LoadedText {
 public:
  /// Nothing was loaded: an empty text.
  LoadedText() = default;
  LoadedText(QByteArray bytes, XmlBytes kind) : m_bytes(std::move(bytes)), m_kind(kind) {}
  explicit LoadedText(std::string characters)
      : m_characters(std::move(characters)), m_kind(XmlBytes::Decoded) {}

  /// What the text holds, printed in UTF-8.
  std::string printed(int indent) const;

 private:
  QByteArray m_bytes;
  std::string m_characters;  // a QByteArray cannot hold all that a text may be decoded to
  XmlBytes m_kind = XmlBytes::AsDeclared;
};

}  // namespace ztcad
