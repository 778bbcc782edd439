#include "node.h"

#include "../xml/dom_backend.h"

QDomElement& ztCAD_INode::writeXml(QDomElement& parent, QDomDocument& document) const {
  ztcad::DomSink sink(parent, document);
  write(sink);
  return parent;
}

bool ztCAD_INode::readXml(const QDomElement& element, bool& fault) {
  return read(ztcad::DomView(element), fault);
}

void ztCAD_StateCorrect::setReadOk(bool readOk) {
  m_readOk = readOk;
  m_wasRead = true;
}
