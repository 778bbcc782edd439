#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/document/document.h"
#include "temporary_files.h"

/// A whole file around these children of the root, as UTF-8.
inline std::string documentWith(const std::string& children) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<GMD>\n" + children + "\n</GMD>\n";
}

/// What a load from a file answers.
struct FileLoad {
  std::int32_t code;
  bool fault;
  bool read;  ///< whether there was content to read
};

/// Loads a file. The outputs begin with values that no load leaves.
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

/// What a load from a string answers.
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

/// The bytes that a save leaves in a file.
inline std::string savedBytes(ztCAD_GMDDocument& document) {
  const TemporaryFiles files;
  document.saveToFile(files.path("document.xml"));
  return bytesOf(files.path("document.xml"));
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
