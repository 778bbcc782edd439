#include "node.h"

#include "../xml/dom_backend.h"

// The destructors are defined out of line to anchor each virtual table in this file.
ztCAD_ISerialize::~ztCAD_ISerialize() = default;
ztCAD_INode::~ztCAD_INode() = default;
ztCAD_IBaseChecker::~ztCAD_IBaseChecker() = default;
ztCAD_StateCorrect::~ztCAD_StateCorrect() = default;
ztCAD_INameLCS_Selector::~ztCAD_INameLCS_Selector() = default;

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
