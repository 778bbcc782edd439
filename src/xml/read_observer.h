#pragma once

#include <QString>

namespace ztcad {

/// Learns what is in a text that no element reads. Positions are addresses in the text that the backend
/// reads; they are valid as long as that text.
///
/// Backends without an observer do none of the work that this takes.
class ReadObserver {
 public:
  virtual ~ReadObserver() = default;

  /// Content that is no part of any element.
  enum class Markup { Comment, Instruction, DocumentType, EntityReference };
  virtual void unreadMarkup(Markup markup, const char* at) = 0;

  /// An attribute that the element was not asked for.
  /// @param isRepeated whether another attribute of the same name follows, whose value counts
  virtual void unreadAttribute(const char* element, const char* at, const QString& name, bool isRepeated) = 0;

  /// A child element in an element whose children are not read.
  virtual void unreadElement(const char* at, const QString& tag) = 0;

  /// Text in an element whose text is not read.
  virtual void unreadText(const char* element, const char* at) = 0;

 protected:
  ReadObserver() = default;
  ReadObserver(const ReadObserver&) = default;
  ReadObserver& operator=(const ReadObserver&) = default;
};

}  // namespace ztcad
