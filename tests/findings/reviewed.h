#pragma once

#include <ztCAD/ztCAD.h>
#include <ztCAD/ztCAD_c.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "temporary_files.h"

struct EndReview {
  void operator()(ztCAD_Review* review) const { ztCAD_endReview(review); }
};
using ReviewHandle = std::unique_ptr<ztCAD_Review, EndReview>;

/// A copy of a place.
struct CopiedPlace {
  std::int64_t line;
  std::int64_t column;
  std::int64_t offset;

  bool operator==(const CopiedPlace& other) const {
    return line == other.line && column == other.column && offset == other.offset;
  }
};

inline CopiedPlace copyOf(const ztCAD_Place& place) { return {place.line, place.column, place.offset}; }

/// A copy of a finding, which the review does not own.
struct CopiedFinding {
  explicit CopiedFinding(const ztCAD_Finding& finding)
      : severity(finding.severity),
        rule(finding.rule),
        message(finding.message),
        place(copyOf(finding.place)),
        path(finding.path),
        kind(ztCAD_kindWord(finding.kind)),
        count(finding.count) {
    if (finding.attribute) attribute = finding.attribute;
    if (finding.name) name = finding.name;
    for (std::int32_t i = 0; i < finding.placeCount; ++i)
      places.push_back(copyOf(finding.places[i]));
  }

  bool operator==(const CopiedFinding& other) const {
    const auto all = [](const CopiedFinding& finding) {
      return std::tie(finding.severity, finding.rule, finding.message, finding.place, finding.path,
                      finding.attribute, finding.kind, finding.name, finding.count, finding.places);
    };
    return all(*this) == all(other);
  }

  std::int32_t severity;
  std::string rule;
  std::string message;
  CopiedPlace place;
  std::string path;
  std::optional<std::string> attribute;
  std::string kind;
  std::optional<std::string> name;
  std::int64_t count;
  std::vector<CopiedPlace> places;
};

inline void PrintTo(const CopiedFinding& finding, std::ostream* out) {
  *out << finding.place.line << ':' << finding.place.column << " (" << finding.place.offset << ") "
       << finding.severity << ' ' << finding.message << " [" << finding.rule << "] " << finding.path << " x"
       << finding.count;
  for (const CopiedPlace& place : finding.places)
    *out << ' ' << place.line << ':' << place.column << '(' << place.offset << ')';
}

/// A finished review, copied.
struct Reviewed {
  ztCAD_Outcome outcome = {};
  std::vector<CopiedFinding> findings;
  std::int64_t omitted[3] = {};

  std::int64_t errors() const {
    std::int64_t count = omitted[ztCAD_SeverityError];
    for (const CopiedFinding& finding : findings)
      count += finding.severity == ztCAD_SeverityError ? 1 : 0;
    return count;
  }
  /// A load gives code 0 and no fault exactly if there is no error.
  bool keepsTheLaw() const { return (errors() == 0) == (outcome.code == 0 && !outcome.fault); }

  std::vector<std::string> rules() const {
    std::vector<std::string> names;
    for (const CopiedFinding& finding : findings)
      names.push_back(finding.rule);
    return names;
  }
};

inline Reviewed copyOf(const ReviewHandle& review, const ztCAD_Outcome& outcome) {
  Reviewed copied;
  copied.outcome = outcome;
  for (std::int64_t i = 0; i < ztCAD_findingCount(review.get()); ++i)
    copied.findings.emplace_back(*ztCAD_findingAt(review.get(), i));
  for (const std::int32_t severity : {ztCAD_SeverityNote, ztCAD_SeverityWarning, ztCAD_SeverityError})
    copied.omitted[severity] = ztCAD_omittedFindings(review.get(), severity);
  return copied;
}

inline Reviewed reviewText(const std::string& text, std::int64_t limit = -1) {
  ztCAD_Outcome outcome;
  const ReviewHandle review(
      ztCAD_reviewText(text.data(), static_cast<std::int64_t>(text.size()), limit, &outcome));
  return copyOf(review, outcome);
}

inline Reviewed reviewFile(const std::string& fileName, std::int64_t limit = -1) {
  ztCAD_Outcome outcome;
  const ReviewHandle review(ztCAD_reviewFile(fileName.c_str(), limit, &outcome));
  return copyOf(review, outcome);
}

/// Reviews bytes as a file: in the encoding that they declare.
inline Reviewed reviewBytes(const std::string& bytes, std::int64_t limit = -1) {
  const TemporaryFiles files;
  return reviewFile(files.put("reviewed.xml", bytes), limit);
}
