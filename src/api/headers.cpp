// The header of a document, declared in c/documents.h.

#include <optional>

#include "../core/document/document.h"
#include "../core/document/live_documents.h"
#include "../text/narrow_text.h"
#include "c/documents.h"
#include "created_objects.h"
#include "guard.h"
#include "text_output.h"

using ztcad::guarded;

ztCAD_HeaderNode* crtHeader() {
  return guarded<ztCAD_HeaderNode*>(nullptr, [] { return ztcad::createRecord<ztCAD_HeaderNode>(); });
}

void setHeader(const ztCAD_HeaderNode* header, ztCAD_GMDDocument* document) {
  guarded([&] {
    if (header && ztcad::isLive(document)) document->setHeader(*header);
  });
}

const ztCAD_HeaderNode* ztCAD_getHeader(const ztCAD_GMDDocument* document) {
  return ztcad::isLive(document) ? &document->header() : nullptr;
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
  return ztcad::writeText(text, size, [&] {
    const std::optional<QString> found = header ? textIn(*header, field) : std::nullopt;
    return found ? std::optional(ztcad::toNarrow(*found)) : std::nullopt;
  });
}

void ztCAD_setHeaderText(ztCAD_HeaderNode* header, std::int32_t field, const char* text) {
  guarded([&] {
    if (header) setText(*header, field, text ? std::optional(ztcad::fromNarrow(text)) : std::nullopt);
  });
}
