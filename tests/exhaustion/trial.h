#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "api/samples.h"

/// One row per exported function: a call in which allocations are refused. Rows allocate as they like outside
/// of `call`; their objects are never freed, because every trial has a process of its own.

namespace exhaustion {

/// What a call reports. `Nothing` for functions without a result, and for results that are no success or
/// failure.
enum class Report { Success, Failure, Nothing };

struct Trial {
  /// Makes the call. Allocates nothing but what the function allocates.
  std::function<Report()> call;
  /// What a host can observe of the call's outcome, as text. A call that fails must not change it.
  std::function<std::string()> state;
  /// Both may be empty. Run in the process of the call, before and after all else.
  std::function<void()> begin = {};
  std::function<void()> end = {};
};

struct Row {
  const char* function;  ///< as in tests/host/exported_functions.txt
  const char* variant;   ///< empty if the function has one row
  Trial (*prepare)();
};

std::vector<Row> documentRows();
std::vector<Row> elementRows();
std::vector<Row> elementArrayRows();
std::vector<Row> contentRows();
std::vector<Row> fieldRows();
std::vector<Row> recordRows();
std::vector<Row> libraryRows();
std::vector<Row> reviewRows();

/// A host's text, too long for the small string optimisation.
inline const std::string& longText() {
  static const std::string text = "Деталь, a name too long for any short string";
  return text;
}

// What an object holds, as text.
std::string print(ztCAD_GMDDocument* document);
std::string print(const ztCAD_Base* element);
std::string print(const ztCAD_Vertices* list);
std::string print(const ztCAD_Faces* list);
std::string print(const ztCAD_LCS* system);
std::string print(const ztCAD_MIP* record);
std::string print(const ztCAD_HeaderNode* header);

/// Records without a name: coordinates, facets, colours.
template <typename Record, std::enable_if_t<!std::is_base_of_v<ztCAD_Base, Record>, int> = 0>
std::string print(const Record* record) {
  QString text;
  return record->toText(text, true).toStdString();
}

/// A document that holds an element of every kind that functions add.
ztCAD_GMDDocument* fullDocument();

// Trials of the common forms of functions.

/// A function that returns a new object, or null.
template <typename Make>
Trial creates(Make make) {
  auto* const made = new decltype(make())(nullptr);
  return {[=] { return (*made = make()) ? Report::Success : Report::Failure; },
          [=] { return *made ? print(*made) : std::string("null"); }};
}

/// A creation function whose last argument is the output `nameIsFree`.
template <typename Element, typename Name, typename... Parameters, typename... Arguments>
Trial creates(Element* (*create)(Name, Parameters...), Arguments... arguments) {
  using Text = std::decay_t<Name>;
  const auto* const name = new Text(longText().c_str());
  return creates([=] {
    if constexpr (sizeof...(Parameters) > sizeof...(Arguments)) {
      bool nameIsFree = false;
      return create(*name, arguments..., nameIsFree);
    } else {
      return create(*name, arguments...);
    }
  });
}

/// A function that changes an object and returns nothing.
template <typename Object, typename Change>
Trial changes(Object* object, Change change) {
  return {[=] { return change(object), Report::Nothing; }, [=] { return print(object); }};
}

/// A function that returns a number.
/// @param atFailure what it returns when memory runs out
template <typename Ask, typename Answer = std::invoke_result_t<Ask>>
Trial answers(Ask ask, Answer atFailure = {}) {
  auto* const answer = new Answer(atFailure);
  return {[=] { return *answer = ask(), Report::Nothing; }, [=] { return std::to_string(*answer); }};
}

/// A function that returns a pointer into an object.
template <typename Ask>
Trial points(Ask ask) {
  return answers([=] { return ask() != nullptr; });
}

/// A function that writes a text into a buffer and returns its length; -1 for none.
template <typename Get>
Trial writes(Get get) {
  constexpr std::int64_t size = 16384;
  auto* const buffer = new char[size]{};
  return {[=] { return get(buffer, size) >= 0 ? Report::Success : Report::Failure; },
          [=] { return std::string(buffer); }};
}

/// A function that adds an element to a document or a structure and returns whether it did not.
template <typename Element, typename Holder>
Trial adds(bool (*add)(const Element*, Holder*), const Element* element, Holder* holder) {
  return {[=] { return add(element, holder) ? Report::Failure : Report::Success; },
          [=] { return print(holder); }};
}

}  // namespace exhaustion
