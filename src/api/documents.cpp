#include "documents.h"

#include "../core/document/check.h"
#include "../core/narrow_text.h"
#include "../structure/read_structures.h"
#include "created_objects.h"
#include "guard.h"

using ztcad::guarded;

namespace {

ztCAD_GMDDocument* createDocument(const std::string& inform) {
  return ztcad::createdObjects().keepDocument(std::make_unique<ztCAD_GMDDocument>(inform));
}

/// The outputs hold the failure values until loading knows better.
void load(ztCAD_GMDDocument* document, const std::string& fileName, std::int32_t& resultCode,
          bool& fault) noexcept {
  const std::int32_t failure = ztCAD_GMDDocument::NotParsed;
  fault = false;
  resultCode = guarded(failure, [&] {
    std::int32_t code = failure;
    if (document) document->loadFromFile(fileName, code, fault);
    return code;
  });
}

}  // namespace

ztCAD_GMDDocument* crtGMDDocument(const std::string& inform) {
  return guarded<ztCAD_GMDDocument*>(nullptr, [&] { return createDocument(inform); });
}

ztCAD_GMDDocument* crtGMDDocument_nostl(const char* inform) {
  return guarded<ztCAD_GMDDocument*>(nullptr, [&] { return createDocument(ztcad::textOf(inform)); });
}

ztCAD_HeaderNode* crtHeader() {
  return guarded<ztCAD_HeaderNode*>(nullptr, [] { return ztcad::createRecord<ztCAD_HeaderNode>(); });
}

void setHeader(const ztCAD_HeaderNode* header, ztCAD_GMDDocument* document) {
  guarded([&] {
    if (header && document) document->setHeader(*header);
  });
}

ztCAD_GMDDocument* crtGMDDocumentFromFile(const std::string& fileName, std::int32_t& resultCode,
                                          bool& fault) {
  ztCAD_GMDDocument* const document = crtGMDDocument(std::string());
  load(document, fileName, resultCode, fault);
  return document;
}

ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed, std::string& message,
                                               int& line, int& column) {
  ztCAD_GMDDocument* const document = crtGMDDocument(std::string());
  std::string told;  // not the output itself, which may be the same object as the text
  parsed = false;
  line = column = 0;
  guarded([&] {
    if (document) told = document->loadFromString(xml, parsed, line, column);
  });
  message.swap(told);
  return document;
}

void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm) {
  guarded([&] {
    text.clear();
    if (!document) return;
    QString told;
    text = textForm ? ztcad::toNarrow(document->toText(told, true)) : document->xmlText();
  });
}

void SaveGMDDocument(ztCAD_GMDDocument* document, const std::string& fileName) {
  guarded([&] {
    if (document) document->saveToFile(fileName);
  });
}

void SaveGMDDocument_nostl(ztCAD_GMDDocument* document, const char* fileName) {
  guarded([&] {
    if (document) document->saveToFile(ztcad::textOf(fileName));
  });
}

void UpdateGMDDoc(ztCAD_GMDDocument* document, const std::string& fileName, std::int32_t& resultCode,
                  bool& fault) {
  if (document) ClearGMDDoc();
  load(document, fileName, resultCode, fault);
}

void ClearGMDDoc() {
  guarded([] { ztcad::clearReadStructures(); });
}

void DeleteGMDDoc(ztCAD_GMDDocument* document) {
  guarded([&] { ztcad::createdObjects().takeDocument(document); });
}

bool checkGMDDocument(const ztCAD_GMDDocument* document) {
  return guarded(false, [&] { return document && ztcad::passesCheck(document->content()); });
}
