#pragma once

#include <string>
#include <vector>

#include "node_text.h"
#include "structure/structure.h"

/// Elements of every kind that details and structures hold, as XML and as objects; all of them pass the
/// check.

inline std::vector<double> twelveValues() { return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}; }
inline const char* const twelveText = "CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12";
inline const char* const mipText = "MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10";
inline ztCAD_MIP mipRecord() { return ztCAD_MIP({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}); }

inline const std::string pointXml = R"(<point name="P" center="1, 2, 3;"/>)";
inline const std::string lineXml =
    R"(<line name="L" method="polyline"><vertices>0, 0, 0;1, 1, 1;</vertices></line>)";
inline const std::string sphereXml = R"(<solid name="B" method="sphere" center="1, 2, 3;" radius="1"/>)";
inline const std::string triangleXml =
    R"(<solid name="T" method="triangulation"><vertices>0, 0, 0;</vertices><faces>0, 0, 0;</faces></solid>)";
inline const std::string mipElementXml =
    std::string(R"(<elementMIP name="M" method="MIP" MIP=")") + mipText + R"("/>)";
inline const std::string detailXml = std::string(R"(<detail name="D" MIP=")") + mipText + R"("/>)";

template <typename Element>
Element named(const char* name) {
  Element made;
  made.setName(QString::fromUtf8(name));
  return made;
}

inline ztCAD_Structure structure(const char* name) {
  bool nameIsFree = false;
  return {QString::fromUtf8(name), ztCAD_LCS(true, twelveValues()), nameIsFree};
}

inline ztCAD_Point pointAt(const ztCAD_Coord& center) {
  ztCAD_Point made;
  made.setCenter(center);
  return made;
}

/// The children that an object writes, in order: "point P, solid sphere B, ...".
template <typename T>
std::string childrenOf(const T& object) {
  QDomDocument document;
  QDomElement parent = document.createElement("e");
  object.writeXml(parent, document);
  QStringList children;
  for (QDomElement child = parent.firstChildElement().firstChildElement(); !child.isNull();
       child = child.nextSiblingElement()) {
    const QString method = child.tagName() == "solid" ? child.attribute("method") + ' ' : QString();
    children += child.tagName() + ' ' + method + child.attribute("name");
  }
  return children.join(", ").toStdString();
}
