#pragma once

#include <ztCAD/ztCAD.h>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "temporary_files.h"

// Shared by tests that use the library as a host does.

struct DocumentDeleter {
  void operator()(ztCAD_GMDDocument* document) const { DeleteGMDDoc(document); }
};
/// A document that is deleted at the end of its scope.
using Document = std::unique_ptr<ztCAD_GMDDocument, DocumentDeleter>;

inline Document newDocument(const std::string& inform = {}) { return Document(crtGMDDocument(inform)); }

/// The document and the outputs of loading a file.
struct Loaded {
  Document document;
  std::int32_t code = -1;
  bool fault = true;
};

inline Loaded loadFile(const std::string& fileName) {
  Loaded loaded;
  loaded.document.reset(crtGMDDocumentFromFile(fileName, loaded.code, loaded.fault));
  return loaded;
}

/// The document and the outputs of loading a string.
struct Parsed {
  Document document;
  bool parsed = false;
  std::string message = "earlier";
  int line = -1;
  int column = -1;
};

inline Parsed parse(const std::string& xml) {
  Parsed parsed;
  parsed.document.reset(
      crtGMDDocumentFromStdString(xml, parsed.parsed, parsed.message, parsed.line, parsed.column));
  return parsed;
}

inline std::string savedBytes(ztCAD_GMDDocument* document) {
  const TemporaryFiles files;
  SaveGMDDocument(document, files.path("document.xml"));
  return textBytesOf(files.path("document.xml"));
}

inline std::string textOf(const ztCAD_GMDDocument* document, bool textForm = true) {
  std::string text = "earlier";
  GMDDocumentToString(document, text, textForm);
  return text;
}

inline ztCAD_Coord* coord(double x, double y, double z) { return crtCoord(&x, &y, &z); }

inline ztCAD_Point* pointAt(const std::string& name, const ztCAD_Coord* center) {
  bool nameIsFree = false;
  return crtPoint(name, center, nameIsFree);
}

inline ztCAD_Point* pointNamed(const std::string& name) { return pointAt(name, coord(0, 0, 0)); }

inline ztCAD_TmplPoint* templatePointNamed(const std::string& name) {
  bool nameIsFree = false;
  return crtTmplPoint(name, pointNamed("source"), nameIsFree);
}

using Names = std::vector<std::string>;

template <typename Container>
Names namesIn(const Container* elements) {
  Names names;
  for (const auto& element : *elements)
    names.push_back(element.name().toStdString());
  return names;
}
