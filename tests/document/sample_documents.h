#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/document/document.h"
#include "temporary_files.h"

/// A complete file in UTF-8 with these children of the root.
inline std::string documentWith(const std::string& children) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<GMD>\n" + children + "\n</GMD>\n";
}

/// The outputs of loading a file.
struct FileLoad {
  std::int32_t code;
  bool fault;
  bool read;  ///< whether there was content to read
};

/// Loads a file. The outputs are initialised to values that loading never yields.
inline FileLoad loadFile(ztCAD_GMDDocument& document, const std::string& fileName) {
  FileLoad load = {-1, true, false};
  load.read = document.loadFromFile(fileName, load.code, load.fault);
  return load;
}

/// Loads these bytes as a file.
inline FileLoad loadBytes(ztCAD_GMDDocument& document, const std::string& bytes) {
  const TemporaryFiles files;
  return loadFile(document, files.put("document.xml", bytes));
}

/// The outputs of loading a string.
struct StringLoad {
  bool parsed;
  std::string message;
  int line;
  int column;
};

inline StringLoad loadString(ztCAD_GMDDocument& document, const std::string& xml) {
  StringLoad load = {false, {}, -1, -1};
  load.message = document.loadFromString(xml, load.parsed, load.line, load.column);
  return load;
}

/// The bytes of a saved document, with LF line ends.
inline std::string savedBytes(ztCAD_GMDDocument& document) {
  const TemporaryFiles files;
  document.saveToFile(files.path("document.xml"));
  return textBytesOf(files.path("document.xml"));
}

inline std::string textOf(const ztCAD_GMDDocument& document) {
  QString text;
  return document.toText(text, true).toStdString();
}

using Names = std::vector<std::string>;

template <typename Container>
Names namesIn(const Container& elements) {
  Names names;
  for (const auto& element : elements)
    names.push_back(element.name().toStdString());
  return names;
}

inline ztCAD_Point pointNamed(const std::string& name) {
  bool nameIsFree = false;
  return {QString::fromStdString(name), ztCAD_Coord(0, 0, 0), nameIsFree};
}

inline ztCAD_TmplPoint templatePointNamed(const std::string& name) {
  bool nameIsFree = false;
  return {QString::fromStdString(name), ztCAD_Point(), nameIsFree};
}

inline void addPoints(ztCAD_GMDDocument& document, const Names& names) {
  for (const std::string& name : names)
    document.content().points.add(pointNamed(name));
}

inline void addTemplatePoints(ztCAD_GMDDocument& document, const Names& names) {
  for (const std::string& name : names)
    document.content().templatePoints.add(templatePointNamed(name));
}

/// Visits every container of a document in declaration order with the tag of its elements; the tag of
/// spheres, which is "solid" in a file, is "sphere" here.
template <typename Content, typename Visit>
void forEachKind(Content& content, Visit&& visit) {
  visit("structure", content.structures);
  visit("structureRef", content.structureReferences);
  visit("template_structure", content.templateStructures);
  visit("point", content.points);
  visit("line", content.lines);
  visit("sphere", content.spheres);
  visit("solid", content.triangles);
  visit("elementMIP", content.mipElements);
  visit("detail", content.details);
  visit("detailRef", content.detailReferences);
  visit("template_detail", content.templateDetails);
  visit("templatePoint", content.templatePoints);
  visit("pointRef", content.pointReferences);
  visit("templateLine", content.templateLines);
  visit("lineRef", content.lineReferences);
  visit("templateElementMIP", content.templateMipElements);
  visit("elementMipRef", content.mipReferences);
  visit("templateSolid", content.templateTriangles);
  visit("solidRef", content.triangleReferences);
}

/// A valid element of each of these kinds, named like its kind.
inline const std::vector<std::string>& oneOfEachKind() {
  static const std::string mip = "MIP='MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10'";
  static const std::string vertices = "<vertices>0, 0, 0; 1, 0, 0; 0, 1, 0;</vertices>";
  static const std::string lists = vertices + "<faces>0, 1, 2;</faces>";
  static const std::vector<std::string> elements = {
      "<structure name='structure'/>",
      "<structureRef name='structureRef' template='template_structure'/>",
      "<template_structure name='template_structure'/>",
      "<point name='point' center='1, 2, 3'/>",
      "<line name='line' method='polyline'>" + vertices + "</line>",
      "<solid name='sphere' method='sphere' center='1' radius='2'/>",
      "<solid name='solid' method='triangulation'>" + lists + "</solid>",
      "<elementMIP name='elementMIP' method='MIP' " + mip + "/>",
      "<detail name='detail' " + mip + "/>",
      "<detailRef name='detailRef' template='template_detail'/>",
      "<template_detail name='template_detail' " + mip + "/>",
      "<templatePoint name='templatePoint' center='1'/>",
      "<pointRef name='pointRef' template='templatePoint'/>",
      "<templateLine name='templateLine'>" + vertices + "</templateLine>",
      "<lineRef name='lineRef' template='templateLine'/>",
      "<templateElementMIP name='templateElementMIP' method='MIP' " + mip + "/>",
      "<elementMipRef name='elementMipRef' template='templateElementMIP'/>",
      "<templateSolid name='templateSolid'>" + lists + "</templateSolid>",
      "<solidRef name='solidRef' template='templateSolid'/>",
  };
  return elements;
}
