#pragma once

#include <ztCAD/ztCAD_c.h>

#include <string>
#include <vector>

namespace cli {

/// All kinds of elements, in the order in which `info` lists them.
const std::vector<std::int32_t>& allKinds();

/// The elements of one kind that a document holds directly.
std::vector<ztCAD_Base*> elementsOf(ztCAD_GMDDocument* document, std::int32_t kind);
/// The elements of one kind that an element holds directly; none unless it is a structure or a detail.
std::vector<ztCAD_Base*> elementsOf(ztCAD_Base* holder, std::int32_t kind);

/// Whether an element of that kind can hold others.
bool isHolder(std::int32_t kind);

/// A text that a getter of the library returns; empty if there is none.
template <typename Object, typename Getter>
std::string textOf(const Object* object, Getter getter) {
  const std::int64_t length = getter(object, nullptr, 0);
  if (length <= 0) return {};
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  getter(object, text.data(), length + 1);
  text.pop_back();  // the terminating zero
  return text;
}

inline std::string nameOf(const ztCAD_Base* element) { return textOf(element, ztCAD_getName); }

}  // namespace cli
