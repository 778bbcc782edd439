#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <QString>
#include <unordered_map>
#include <utility>
#include <vector>

#include "../number/list_remarks.h"
#include "../xml/element_view.h"
#include "../xml/read_observer.h"
#include "rule.h"

class ztCAD_Base;

namespace ztcad {

/// A kind of element as hosts and messages name it.
struct KindName {
  std::int32_t number;  ///< a `ztCAD_ElementKind`
  const char* word;     ///< "template-point"
};

/// A finding while the text is being read. Positions are addresses in the text that the backend reads.
struct FindingInText {
  const char* rule = nullptr;  // its name
  Severity severity = {};
  const char* element = nullptr;    // the "<" of its start tag, or of other markup
  const char* attribute = nullptr;  // its name; null: the finding is about the element
  QString attributeName;
  QString message;
  const KindName* kind = nullptr;  // of the nearest element of the format
  std::optional<QString> name;     // of that element
  std::int64_t count = 1;
  std::vector<const char*> places;  // of a finding that may occur several times
};

/// An element of the format in the text.
struct ElementInText {
  const ztCAD_Base* element;
  const char* position;
  const KindName* kind;
};

/// Who reports an element without a name.
enum class NameCheck { ByElement, ByHolder };

/// Collects what is found while a document is read. The class that decides that it did not read well, skips
/// something or changes it reports that, through the functions below, to the view that it reads from.
///
/// A finding is an error only if the failure that it reports reaches the result of the load: where a holder
/// reads well in spite of it, the errors reported in between become warnings.
class Review final : public ReadObserver {
 public:
  /// @param limit greatest number of findings to keep; the others are counted. Negative: all
  explicit Review(std::int64_t limit);

  /// Reports about an element, or about one of its attributes.
  /// @param attribute null: about the element
  void report(const ElementView& element, Rule rule, const QString* attribute,
              std::initializer_list<QString> arguments);
  /// Reports about a list; `occurrences` must not be empty.
  void report(const ElementView& list, Rule rule, const Occurrences& occurrences);
  /// Reports about an element after it was read.
  void report(const ElementInText& element, Rule rule, const QString& name,
              std::initializer_list<QString> arguments);
  /// Reports about the text as a whole; `occurrences` must not be empty.
  void report(Rule rule, const Occurrences& occurrences);
  /// Reports about a place that belongs to no element.
  void report(Rule rule, const char* position, std::initializer_list<QString> arguments);

  void unreadMarkup(Markup markup, const char* at) override;
  void unreadAttribute(const char* element, const char* at, const QString& name, bool isRepeated) override;
  void unreadElement(const char* at, const QString& tag) override;
  void unreadText(const char* element, const char* at) override;

  /// What was found up to a moment.
  struct Mark {
    std::size_t kept;
    std::int64_t omittedErrors;
  };
  Mark mark() const { return {m_findings.size(), omitted(Severity::error)}; }
  /// Makes the errors that were found between two moments warnings.
  void tolerate(const Mark& from, const Mark& to);

  /// Begins and ends an element of the format.
  void enter(const ElementView& view, const KindName& kind, const ztCAD_Base& element, NameCheck nameCheck);
  void leave() { m_open.pop_back(); }

  bool namesAreCheckedByHolder() const {
    return !m_open.empty() && m_open.back().nameCheck == NameCheck::ByHolder;
  }

  /// Ends the reading. What is reported afterwards has a limit of its own, because it may lie before the last
  /// findings of the reading.
  void beginAfterReading() { m_firstAfterReading = m_findings.size(); }
  /// Adds the findings of the text as a whole.
  void finish();
  /// Forgets everything, for another attempt.
  void clear();

  std::int64_t limit() const { return m_limit; }
  const std::vector<FindingInText>& findings() const { return m_findings; }
  std::int64_t omitted(Severity severity) const { return m_omitted[static_cast<std::size_t>(severity)]; }
  /// All elements of the format, in the order of the text.
  const std::vector<ElementInText>& elements() const { return m_elements; }
  std::vector<ElementInText> takeElements() { return std::move(m_elements); }

  /// Begins the root element.
  void enterRoot(const ElementView& root) { m_root = root.position(); }
  /// The "<" of the root element; null if there was none.
  const char* root() const { return m_root; }

 private:
  struct OpenElement {
    const ElementView* view;
    const KindName* kind;
    NameCheck nameCheck;
  };

  struct Named {
    const KindName* kind = nullptr;
    std::optional<QString> name;
  };
  bool isFull() const {
    return m_limit >= 0 && m_findings.size() - m_firstAfterReading >= static_cast<std::size_t>(m_limit);
  }
  Named nearestElement() const;
  FindingInText* add(Rule rule, const char* element, const Named& nearest,
                     std::initializer_list<QString> arguments);
  FindingInText* addHere(Rule rule, const char* element, std::initializer_list<QString> arguments);

  std::int64_t m_limit;
  std::vector<FindingInText> m_findings;
  std::size_t m_firstAfterReading = 0;
  std::array<std::int64_t, 3> m_omitted = {};  // by severity
  std::array<Occurrences, 4> m_markup;
  std::vector<OpenElement> m_open;
  std::vector<ElementInText> m_elements;
  const char* m_root = nullptr;
  std::unordered_map<const char*, std::size_t> m_texts;  // elements with unexpected text, to their findings
};

/// The review that reads through a view; null if there is none.
inline Review* reviewOf(const ElementView& element) { return static_cast<Review*>(element.observer()); }

/// The message of a finding about no element.
QString messageOf(Rule rule, std::initializer_list<QString> arguments);

/// A value of the text in a message: in quotes, and shortened if it is long.
struct Quoted {
  const QString& text;
};

/// The forms of arguments in a message.
/// @{
inline QString argumentText(const QString& text) { return text; }
QString argumentText(const Quoted& value);
inline QString argumentText(std::int64_t number) { return QString::number(number); }
/// @}

/// Reports about an element.
template <typename... Arguments>
void report(const ElementView& element, Rule rule, const Arguments&... arguments) {
  if (Review* const review = reviewOf(element))
    review->report(element, rule, nullptr, {argumentText(arguments)...});
}

/// Reports about an attribute of an element.
template <typename... Arguments>
void reportAttribute(const ElementView& element, const QString& attribute, Rule rule,
                     const Arguments&... arguments) {
  if (Review* const review = reviewOf(element))
    review->report(element, rule, &attribute, {argumentText(arguments)...});
}

/// The text of an attribute that is kept as it is; empty without the attribute.
QString keptText(const ElementView& element, const QString& attribute);
/// Reports characters of a kept text that windows-1251 lacks.
void reviewText(const ElementView& element, const QString& attribute, const QString& text);
/// Reports a name that is missing or empty, and its characters that windows-1251 lacks.
void reviewName(const ElementView& element, const std::optional<QString>& name);
/// Reports the reals in an attribute that will be written with fewer digits.
void reviewReals(const ElementView& element, const QString& attribute);
/// Reports a "method" other than the one that the element is always written with.
void reviewMethod(const ElementView& element, const QString& written);
/// Reports what the parser of a list remarked.
void reviewList(const ElementView& list, const ListRemarks& remarks);

/// Skip a child element that has no meaning in its parent, or that is a list which the parent has already.
/// @{
void skipUnknown(const ElementView& child);
void skipRepeated(const ElementView& child);
/// @}

/// Numbers in an attribute of which those that do not convert count as 0.
class ReviewedNumbers {
 public:
  ReviewedNumbers(const ElementView& element, const QString& attribute)
      : m_element(element), m_attribute(attribute) {}

  double realOrZero(QStringView text);
  std::uint32_t indexOrZero(QStringView text);

  /// Reports those that did not convert.
  void report() const;

 private:
  void count(bool converted, QStringView text);

  const ElementView& m_element;
  const QString& m_attribute;
  std::int64_t m_failures = 0;
  QString m_firstFailure;
};

/// While this exists, errors that are reported about an element become warnings: what fails there does not
/// make the element fail.
class Tolerated {
 public:
  explicit Tolerated(const ElementView& element) : m_review(reviewOf(element)) {
    if (m_review) m_from = m_review->mark();
  }
  Tolerated(const Tolerated&) = delete;
  Tolerated& operator=(const Tolerated&) = delete;
  ~Tolerated() {
    if (m_review) m_review->tolerate(m_from, m_review->mark());
  }

 private:
  Review* const m_review;
  Review::Mark m_from = {};
};

/// The read of an element of the format.
class ReviewedElement {
 public:
  ReviewedElement(const ElementView& view, const KindName& kind, const ztCAD_Base& element,
                  NameCheck nameCheck = NameCheck::ByElement)
      : m_view(view), m_review(reviewOf(view)) {
    if (!m_review) return;
    m_from = m_review->mark();
    m_review->enter(view, kind, element, nameCheck);
  }
  ReviewedElement(const ReviewedElement&) = delete;
  ReviewedElement& operator=(const ReviewedElement&) = delete;
  ~ReviewedElement() {
    if (m_review) m_review->leave();
  }

  /// Takes the outcome: what is reported in an element that reads well is no error.
  bool read(bool ok) const {
    if (!m_review) return ok;
    m_view.reportUnread();
    if (ok) m_review->tolerate(m_from, m_review->mark());
    return ok;
  }

 private:
  const ElementView& m_view;
  Review* const m_review;
  Review::Mark m_from = {};
};

}  // namespace ztcad
