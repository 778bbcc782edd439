#include "loaded_text.h"

namespace ztcad {

const QDomDocument& LoadedText::tree() const {
  if (m_hasTree) return m_tree;
  parseBytes(m_bytes, m_kind, m_tree);
  m_hasTree = true;
  m_bytes.clear();
  return m_tree;
}

ParseOutcome parseBytes(const QByteArray& bytes, XmlBytes kind, QDomDocument& tree) {
  if (kind == XmlBytes::AsDeclared) return parseXml(bytes, tree);
  return parseXml(QString::fromUtf8(bytes.constData(), bytes.size()), tree);  // a NUL is part of the text
}

}  // namespace ztcad
