#include "trial.h"

#include <array>

namespace exhaustion {

namespace {

template <typename Numbers>
std::string list(const Numbers& numbers) {
  std::string text;
  for (const auto number : numbers)
    text += std::to_string(number) + ' ';
  return text;
}

}  // namespace

std::string print(ztCAD_GMDDocument* document) {
  std::string text = textOf(document, true);
  for (std::int32_t kind = 0; kind <= ztCAD_ElementSphere; ++kind) {
    const std::int32_t count = ztCAD_countInDoc(document, kind);
    for (std::int32_t i = 0; i < count; ++i)
      text += print(ztCAD_getFromDoc(document, kind, i)) + '\n';
  }
  return text;
}

std::string print(const ztCAD_Base* element) {
  std::string text;
  const auto addText = [&](std::int64_t (*get)(const ztCAD_Base*, char*, std::int64_t)) {
    char buffer[400] = "";
    text += get(element, buffer, sizeof buffer) < 0 ? "no text" : buffer;
    text += '|';
  };
  for (const auto get : {ztCAD_getName, ztCAD_getComment, ztCAD_getInform, ztCAD_getMethod,
                         ztCAD_getTemplateName, ztCAD_getTemplateFile})
    addText(get);
  for (const auto get : {ztCAD_getLCS, ztCAD_getMIP, ztCAD_getPlacement}) {
    std::array<double, 40> values = {};
    text += std::to_string(get(element, values.data(), 40)) + ": " + list(values);
  }
  std::array<std::uint32_t, 3> color = {};
  ztCAD_getColor(element, color.data());
  text += list(color) + list(std::vector{ztCAD_getVisible(element), ztCAD_getReadOk(element)});
  std::string diagnostic(static_cast<std::size_t>(ztCAD_getText(element, true, nullptr, 0)) + 1, ' ');
  ztCAD_getText(element, true, diagnostic.data(), static_cast<std::int64_t>(diagnostic.size()));
  return text + diagnostic;
}

std::string print(const ztCAD_Vertices* vertices) { return list(vertices->coordinates()); }

std::string print(const ztCAD_Faces* faces) { return list(faces->indices()); }

std::string print(const ztCAD_LCS* system) {
  return list(system->values()) + (system->isLocal() ? "local" : "");
}

std::string print(const ztCAD_MIP* record) {
  return list(record->values()) + list(std::vector{record->firstInteger(), record->secondInteger()});
}

std::string print(const ztCAD_HeaderNode* header) {
  std::string text;
  for (std::int32_t field = 0; field < 4; ++field) {
    char buffer[200] = "";
    std::uint32_t number = 0;
    text += ztCAD_getHeaderText(header, field, buffer, sizeof buffer) < 0 ? "unset" : buffer;
    text += ztCAD_getHeaderNumber(header, field, &number) ? std::to_string(number) : "unset";
  }
  return text;
}

ztCAD_GMDDocument* fullDocument() {
  ztCAD_GMDDocument* const document = crtGMDDocument(longText());
  forEachDocumentKind([&](auto kind) {
    using Element = typename decltype(kind)::Element;
    kind.add(make<Element>(longText()), document);
    kind.add(make<Element>("second"), document);
  });
  return document;
}

}  // namespace exhaustion
