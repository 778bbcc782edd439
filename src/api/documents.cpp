#include "documents.h"

#include <algorithm>
#include <string_view>

#include "../core/document/check.h"
#include "../text/narrow_text.h"
#include "../structure/read_structures.h"
#include "created_objects.h"
#include "guard.h"
#include "text_output.h"

using ztcad::guarded;

namespace {

ztCAD_GMDDocument* createDocument(const std::string& inform) {
  return ztcad::createdObjects().keepDocument(std::make_unique<ztCAD_GMDDocument>(inform));
}

/// The outputs hold the failure values until loading knows better. A file name by pointer may be null.
template <typename Name>
void load(ztCAD_GMDDocument* document, const Name& fileName, std::int32_t& resultCode, bool& fault) noexcept {
  const std::int32_t failure = ztCAD_GMDDocument::NotParsed;
  fault = false;
  resultCode = guarded(failure, [&] {
    std::int32_t code = failure;
    if (document) document->loadFromFile(ztcad::textOf(fileName), code, fault);
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
  if (document) ClearGMDDoc();
  load(document, fileName, resultCode, fault);
}

/// @param message output, not that of the host, which may be the same object as the text
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
  QString told;
  return textForm ? ztcad::toNarrow(document.toText(told, true)) : document.xmlText();
}

/// As much of a UTF-8 text as the buffer holds, cut off behind a whole character.
void cutInto(char* buffer, std::int32_t size, std::string_view text) noexcept {
  if (!buffer || size <= 0) return;
  std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
  const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (length > 0 && length < text.size() && isInside(text[length]))
    --length;
  buffer[text.copy(buffer, length)] = '\0';
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
  return createFrom(fileName, resultCode, fault);
}

ztCAD_GMDDocument* crtGMDDocumentFromFile_nostl(const char* fileName, std::int32_t& resultCode, bool& fault) {
  return createFrom(fileName, resultCode, fault);
}

ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed, std::string& message,
                                               int& line, int& column) {
  std::string told;
  ztCAD_GMDDocument* const document = parse(xml, parsed, told, line, column);
  message.swap(told);
  return document;
}

ztCAD_GMDDocument* crtGMDDocumentFromStdString_nostl(const char* xml, bool& parsed, char* message,
                                                     std::int32_t messageSize, int& line, int& column) {
  std::string told;
  ztCAD_GMDDocument* const document = parse(xml, parsed, told, line, column);
  cutInto(message, messageSize, told);
  return document;
}

void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm) {
  guarded([&] {
    text.clear();
    if (document) text = textOf(*document, textForm);
  });
}

std::int64_t GMDDocumentToString_nostl(const ztCAD_GMDDocument* document, bool textForm, char* text,
                                       std::int64_t size) {
  return ztcad::giveText(
      text, size, [&] { return document ? std::optional(textOf(*document, textForm)) : std::nullopt; });
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
  return guarded(false, [&] { return document && ztcad::passesCheck(document->content()); });
}

// -------------------------------------------------------------------------------- the header

const ztCAD_HeaderNode* ztCAD_getHeader(const ztCAD_GMDDocument* document) {
  return document ? &document->header() : nullptr;
}

namespace {

std::optional<std::uint32_t> numberIn(const ztCAD_HeaderNode& header, std::int32_t field) {
  switch (field) {
    case ztCAD_HeaderMajorVersion:
      return header.majorVersion();
    case ztCAD_HeaderMinorVersion:
      return header.minorVersion();
    case ztCAD_HeaderState:
      return header.state().isSet ? std::optional(header.state().code) : std::nullopt;
    default:
      return std::nullopt;
  }
}

void setNumber(ztCAD_HeaderNode& header, std::int32_t field, std::optional<std::uint32_t> value) {
  switch (field) {
    case ztCAD_HeaderMajorVersion:
      return header.setMajorVersion(value);
    case ztCAD_HeaderMinorVersion:
      return header.setMinorVersion(value);
    case ztCAD_HeaderState:
      return header.setState(value ? ztCAD_State{true, *value} : ztCAD_State());
    default:
      return;
  }
}

std::optional<QString> textIn(const ztCAD_HeaderNode& header, std::int32_t field) {
  switch (field) {
    case ztCAD_HeaderInform:
      return header.inform();
    case ztCAD_HeaderProducerName:
      return header.producerName();
    case ztCAD_HeaderProducerVersion:
      return header.producerVersion();
    case ztCAD_HeaderProducerPlatform:
      return header.producerPlatform();
    default:
      return std::nullopt;
  }
}

void setText(ztCAD_HeaderNode& header, std::int32_t field, const std::optional<QString>& text) {
  switch (field) {
    case ztCAD_HeaderInform:
      return header.setInform(text);
    case ztCAD_HeaderProducerName:
      return header.setProducerName(text);
    case ztCAD_HeaderProducerVersion:
      return header.setProducerVersion(text);
    case ztCAD_HeaderProducerPlatform:
      return header.setProducerPlatform(text);
    default:
      return;
  }
}

}  // namespace

bool ztCAD_getHeaderNumber(const ztCAD_HeaderNode* header, std::int32_t field, std::uint32_t* value) {
  const std::optional<std::uint32_t> number = header ? numberIn(*header, field) : std::nullopt;
  if (value && number) *value = *number;
  return number.has_value();
}

void ztCAD_setHeaderNumber(ztCAD_HeaderNode* header, std::int32_t field, const std::uint32_t* value) {
  if (header) setNumber(*header, field, value ? std::optional(*value) : std::nullopt);
}

std::int64_t ztCAD_getHeaderText(const ztCAD_HeaderNode* header, std::int32_t field, char* text,
                                 std::int64_t size) {
  return ztcad::giveText(text, size, [&] {
    const std::optional<QString> found = header ? textIn(*header, field) : std::nullopt;
    return found ? std::optional(ztcad::toNarrow(*found)) : std::nullopt;
  });
}

void ztCAD_setHeaderText(ztCAD_HeaderNode* header, std::int32_t field, const char* text) {
  guarded([&] {
    if (header) setText(*header, field, text ? std::optional(ztcad::fromNarrow(text)) : std::nullopt);
  });
}
