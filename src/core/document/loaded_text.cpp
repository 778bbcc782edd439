#include "loaded_text.h"

#include "../../xml/xml_print.h"

namespace ztcad {

std::string LoadedText::printed(int indent) const {
  const std::string_view bytes = m_bytes ? m_bytes->view() : std::string_view();
  return printXml(XmlText(m_kind == XmlBytes::Decoded ? m_characters : bytes, m_kind), indent);
}

}  // namespace ztcad
