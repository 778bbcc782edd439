#pragma once

#include <memory>
#include <string>
#include <utility>

#include "../../text/text_bytes.h"
#include "../../xml/xml_text.h"

namespace ztcad {

/// The text that a document was loaded from: its bytes, or its characters if these were a copy.
class LoadedText {
 public:
  /// Nothing was loaded: an empty text.
  LoadedText() = default;
  /// @param bytes not null
  LoadedText(std::shared_ptr<const TextBytes> bytes, XmlBytes kind)
      : m_bytes(std::move(bytes)), m_kind(kind) {}
  explicit LoadedText(std::string characters)
      : m_characters(std::move(characters)), m_kind(XmlBytes::Decoded) {}

  /// What the text holds, printed in UTF-8.
  std::string printed(int indent) const;

 private:
  std::shared_ptr<const TextBytes> m_bytes;  // null: there are none
  std::string m_characters;
  XmlBytes m_kind = XmlBytes::AsDeclared;
};

}  // namespace ztcad
