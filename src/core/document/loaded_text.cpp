#include "loaded_text.h"

#include "../../xml/xml_print.h"

namespace ztcad {

std::string LoadedText::printed(int indent) const {
  const std::string_view bytes(m_bytes.constData(), static_cast<std::size_t>(m_bytes.size()));
  return printXml(XmlText(m_kind == XmlBytes::Decoded ? m_characters : bytes, m_kind), indent);
}

}  // namespace ztcad
