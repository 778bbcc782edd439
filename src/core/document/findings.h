#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "../../text/text_bytes.h"
#include "../../xml/text_places.h"
#include "../review.h"

namespace ztcad {

/// A finding of a finished load, for hosts.
struct Finding {
  const char* rule = nullptr;  // its name
  Severity severity = {};
  std::string message;
  TextPlace place;
  std::string path;
  std::optional<std::string> attribute;
  const KindName* kind = nullptr;  // null: none
  std::optional<std::string> name;
  std::int64_t count = 0;
  std::vector<TextPlace> places;  // of a finding that may occur several times
};

/// What a load found.
struct Findings {
  std::vector<Finding> kept;                 // in the order of the text
  std::array<std::int64_t, 3> omitted = {};  // by severity
};

/// A finding that the host adds to those of a load.
struct AddedFinding {
  Severity severity = {};
  std::string_view rule;
  std::string_view message;
  const ztCAD_Base* element = nullptr;  // null: the finding is about the document
  std::optional<std::string> attribute;
  std::int64_t count = 1;
};

/// A load with a review, after its end: its findings, and its text, in which further findings are located.
class ReviewedLoad {
 public:
  /// A load that looked at no text: nothing was found, and nothing can be added.
  ReviewedLoad() = default;
  /// The only finding about a text that was not looked at.
  ReviewedLoad(std::int64_t limit, Rule rule, const QString& argument);
  /// Finds the places and paths of what a review collected, and cuts the list to its limit.
  /// @param bytes the source of `text`; positions in `review` are addresses in either of them
  ReviewedLoad(Review& review, std::shared_ptr<const TextBytes> bytes, std::unique_ptr<XmlText> text);

  const Findings& findings() const { return m_findings; }

  /// The findings with others about elements that the load read, in the order of the text: after those that
  /// it has at the same place. The limit holds for all findings together.
  /// @return nothing if an element is not one that the load read
  std::optional<Findings> withAdded(const std::vector<AddedFinding>& added);
  /// Replaces the findings. The texts in `findings` keep their addresses.
  void replaceFindings(Findings&& findings) noexcept { m_findings = std::move(findings); }

 private:
  std::string_view bytes() const { return m_bytes ? m_bytes->view() : std::string_view(); }
  void cutToLimit(Findings& findings) const;
  std::vector<Finding> located(const std::vector<FindingInText>& findings, Findings& counts) const;
  std::unordered_map<const ztCAD_Base*, ElementInText> elementsOf(
      const std::vector<AddedFinding>& added) const;
  void moveIntoCharacters(std::unordered_map<const ztCAD_Base*, ElementInText>& elements) const;
  FindingInText inText(const AddedFinding& added, const ElementInText& element);

  std::int64_t m_limit = 0;
  std::shared_ptr<const TextBytes> m_bytes;  // null: no text was looked at
  std::unique_ptr<XmlText> m_text;
  std::vector<ElementInText> m_elements;  // in the order of the text
  const char* m_root = nullptr;           // null: no element was read
  Findings m_findings;
  std::set<std::string, std::less<>> m_addedRules;
};

}  // namespace ztcad
