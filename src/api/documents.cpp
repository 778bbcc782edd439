#include "documents.h"

#include <memory>
#include <QFileDevice>
#include <string_view>

#include "../core/document/check.h"
#include "../core/document/live_documents.h"
#include "../core/document/loading.h"
#include "../core/document/saving.h"
#include "../structure/read_structures.h"
#include "../text/narrow_text.h"
#include "created_objects.h"
#include "guard.h"
#include "outcome.h"
#include "text_output.h"

using ztcad::guarded;
using ztcad::isLive;
using ztcad::report;
using ztcad::reportNoMemory;

namespace {

ztCAD_GMDDocument* createDocument(const std::string& inform) {
  return ztcad::createdObjects().keepDocument(std::make_unique<ztCAD_GMDDocument>(inform));
}

/// The outputs hold the failure values until the load succeeds. A file name that is a pointer may be null.
template <typename Name>
void load(ztCAD_GMDDocument* document, const Name& fileName, std::int32_t& resultCode, bool& fault) noexcept {
  const std::int32_t failure = ztCAD_GMDDocument::NotParsed;
  fault = false;
  resultCode = guarded(failure, [&] {
    std::int32_t code = failure;
    if (isLive(document)) document->loadFromFile(ztcad::textOf(fileName), code, fault);
    return code;
  });
}

template <typename Name>
ztCAD_GMDDocument* createFrom(const Name& fileName, std::int32_t& resultCode, bool& fault) noexcept {
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl(nullptr);
  load(document, fileName, resultCode, fault);
  return document;
}

template <typename Name>
void update(ztCAD_GMDDocument* document, const Name& fileName, std::int32_t& resultCode,
            bool& fault) noexcept {
  if (isLive(document)) ClearGMDDoc();
  load(document, fileName, resultCode, fault);
}

/// @param message output; not the host's own object, which may be the same as `xml`
template <typename Text>
ztCAD_GMDDocument* parse(const Text& xml, bool& parsed, std::string& message, int& line,
                         int& column) noexcept {
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl(nullptr);
  parsed = false;
  line = column = 0;
  guarded([&] {
    if (document) message = document->loadFromString(ztcad::textOf(xml), parsed, line, column);
  });
  return document;
}

std::string textOf(const ztCAD_GMDDocument& document, bool textForm) {
  QString out;
  return textForm ? ztcad::toNarrow(document.toText(out, true)) : document.xmlText();
}

constexpr std::int32_t notParsed = ztCAD_ResultNotParsed;
constexpr std::string_view noDocument = "no document was given";

/// @param load called with a `DocumentLoader`; returns its `LoadOutcome`
template <typename Load>
bool loadInto(ztCAD_GMDDocument& document, ztCAD_Outcome* outcome, Load&& load) {
  ztcad::DocumentLoader loader(document, ztcad::NestedOwner::Document);
  const ztcad::LoadOutcome result = load(loader);
  report(outcome, result);
  return result.replaced;
}

template <typename Load>
ztCAD_GMDDocument* loadNew(ztCAD_Outcome* outcome, Load&& load) noexcept {
  reportNoMemory(outcome);
  auto* const made = guarded<ztCAD_GMDDocument*>(nullptr, [&]() -> ztCAD_GMDDocument* {
    std::unique_ptr<ztCAD_GMDDocument, ztcad::EndAlone> document(
        std::make_unique<ztCAD_GMDDocument>(std::string()).release());
    if (!loadInto(*document, outcome, load)) return nullptr;
    return ztcad::createdObjects().keepDocument(std::move(document));
  });
  // loaded, but then there was no memory to register the document
  if (!made && outcome && outcome->code == ztCAD_ResultLoaded) reportNoMemory(outcome);
  return made;
}

/// @param save called if the document is live; returns a `FileError`
template <typename Save>
bool saveReporting(const ztCAD_GMDDocument* document, ztCAD_Outcome* outcome, Save&& save) noexcept {
  report(outcome, QFileDevice::ResourceError, isLive(document) ? ztcad::noMemory : noDocument);
  return guarded(false, [&] {
    if (!isLive(document)) return false;
    const ztcad::FileError error = save();
    report(outcome, error.code, ztcad::toNarrow(error.message));
    return error.code == 0;
  });
}

}  // namespace

ztCAD_GMDDocument* crtGMDDocument(const std::string& inform) {
  return guarded<ztCAD_GMDDocument*>(nullptr, [&] { return createDocument(inform); });
}

ztCAD_GMDDocument* crtGMDDocument_nostl(const char* inform) {
  return guarded<ztCAD_GMDDocument*>(nullptr, [&] { return createDocument(ztcad::textOf(inform)); });
}

ztCAD_GMDDocument* crtGMDDocumentFromFile(const std::string& fileName, std::int32_t& resultCode,
                                          bool& fault) {
  return createFrom(fileName, resultCode, fault);
}

ztCAD_GMDDocument* crtGMDDocumentFromFile_nostl(const char* fileName, std::int32_t& resultCode, bool& fault) {
  return createFrom(fileName, resultCode, fault);
}

ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed, std::string& message,
                                               int& line, int& column) {
  std::string parserMessage;
  ztCAD_GMDDocument* const document = parse(xml, parsed, parserMessage, line, column);
  message.swap(parserMessage);
  return document;
}

ztCAD_GMDDocument* crtGMDDocumentFromStdString_nostl(const char* xml, bool& parsed, char* message,
                                                     std::int32_t messageSize, int& line, int& column) {
  std::string parserMessage;
  ztCAD_GMDDocument* const document = parse(xml, parsed, parserMessage, line, column);
  ztcad::cutInto(message, messageSize, parserMessage);
  return document;
}

void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm) {
  guarded([&] {
    text.clear();
    if (isLive(document)) text = textOf(*document, textForm);
  });
}

std::int64_t GMDDocumentToString_nostl(const ztCAD_GMDDocument* document, bool textForm, char* text,
                                       std::int64_t size) {
  return ztcad::writeText(text, size, [&] {
    return isLive(document) ? std::optional(textOf(*document, textForm)) : std::nullopt;
  });
}

ztCAD_GMDDocument* ztCAD_loadDocument(const char* fileName, ztCAD_Outcome* outcome) {
  return loadNew(outcome, [fileName](ztcad::DocumentLoader& loader) {
    return loader.loadFile(ztcad::textOf(fileName));
  });
}

ztCAD_GMDDocument* ztCAD_loadDocumentFromText(const char* text, std::int64_t size, ztCAD_Outcome* outcome) {
  return loadNew(outcome, [text, size](ztcad::DocumentLoader& loader) {
    return loader.loadText(ztcad::countedText(text, size), ztcad::TextRules::Strict);
  });
}

bool ztCAD_reloadDocument(ztCAD_GMDDocument* document, const char* fileName, ztCAD_Outcome* outcome) {
  report(outcome, notParsed, isLive(document) ? ztcad::noMemory : noDocument);
  return guarded(false, [&] {
    return isLive(document) && loadInto(*document, outcome, [fileName](ztcad::DocumentLoader& loader) {
             return loader.loadFile(ztcad::textOf(fileName));
           });
  });
}

bool ztCAD_saveDocument(ztCAD_GMDDocument* document, const char* fileName, ztCAD_Outcome* outcome) {
  return saveReporting(document, outcome,
                       [&] { return ztcad::saveDocument(*document, ztcad::textOf(fileName)); });
}

namespace {

/// Hands bytes to a function of the host.
class HostOutput final : public ztcad::ByteOutput {
 public:
  HostOutput(ztCAD_WriteBytes function, void* context) : m_write(function), m_context(context) {}

  void write(std::string_view bytes) override {
    const bool goesOn = m_write(bytes.data(), static_cast<std::int64_t>(bytes.size()), m_context);
    if (!goesOn) throw ztcad::TextRefused("the host ended the save");
  }

 private:
  const ztCAD_WriteBytes m_write;
  void* const m_context;
};

}  // namespace

bool ztCAD_saveDocumentTo(ztCAD_GMDDocument* document, ztCAD_WriteBytes write, void* context,
                          ztCAD_Outcome* outcome) {
  return saveReporting(document, outcome, [&] {
    if (!write) return ztcad::FileError{QFileDevice::OpenError, QLatin1String("no function was given")};
    HostOutput output(write, context);
    return ztcad::saveDocument(*document, output);
  });
}

void ztCAD_endDocument(ztCAD_GMDDocument* document) {
  guarded([&] {
    if (auto taken = ztcad::createdObjects().takeDocument(document)) ztcad::EndAlone()(taken.release());
  });
}

void SaveGMDDocument(ztCAD_GMDDocument* document, const std::string& fileName) {
  guarded([&] {
    if (isLive(document)) document->saveToFile(fileName);
  });
}

void SaveGMDDocument_nostl(ztCAD_GMDDocument* document, const char* fileName) {
  guarded([&] {
    if (isLive(document)) document->saveToFile(ztcad::textOf(fileName));
  });
}

void UpdateGMDDoc(ztCAD_GMDDocument* document, const std::string& fileName, std::int32_t& resultCode,
                  bool& fault) {
  update(document, fileName, resultCode, fault);
}

void UpdateGMDDoc_nostl(ztCAD_GMDDocument* document, const char* fileName, std::int32_t& resultCode,
                        bool& fault) {
  update(document, fileName, resultCode, fault);
}

void ClearGMDDoc() {
  guarded([] { ztcad::clearReadStructures(); });
}

void DeleteGMDDoc(ztCAD_GMDDocument* document) {
  guarded([&] { ztcad::createdObjects().takeDocument(document); });
}

bool checkGMDDocument(const ztCAD_GMDDocument* document) {
  return guarded(false, [&] { return isLive(document) && ztcad::passesCheck(document->content()); });
}
