#pragma once

#include <map>
#include <optional>
#include <QString>
#include <string_view>

#include "document_type_reader.h"

namespace ztcad {

/// Collects the document type declarations of a text and prints them as one, as QDom does: the name and
/// identifier of the last one, and the notations of all.
class DocumentTypePrinter {
 public:
  void start(std::string_view name, const XmlExternalId& id);
  /// A notation of the same name is replaced.
  void addNotation(std::string_view name, const XmlExternalId& id);

  /// The declaration, with the notations in the order of their names; std::nullopt if there is none.
  std::optional<QString> text() const;

 private:
  std::optional<QString> m_start;          // without the ">"
  std::map<QString, QString> m_notations;  // by name
};

}  // namespace ztcad
