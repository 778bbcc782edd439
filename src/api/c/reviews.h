#pragma once

#include "documents.h"
#include "types.h"

/// @file
/// Reviews: loads that report what they find. A review reads a document as `ztCAD_loadDocument` does and
/// keeps its findings: why the result code is not 0, what of the text the load skips, replaces or renames,
/// and what the next save will not keep.
///
/// A load gives code 0 and no fault exactly if its review has no finding of severity `ztCAD_SeverityError`,
/// omitted ones included. (A file that cannot be read has no findings: its outcome has the reason.)

ZTCAD_C_BEGIN

/// How much a finding matters.
enum ztCAD_Severity {
  ztCAD_SeverityNote = 0,     ///< allowed and read as meant, but likely not what the writer wanted
  ztCAD_SeverityWarning = 1,  ///< the load or the next save drops, replaces or renames something
  ztCAD_SeverityError = 2     ///< a reason for a code other than 0, or for the fault flag
};

/// A position in the reviewed text.
typedef struct ztCAD_Place {  // NOLINT(modernize-use-using): C reads it too
  int64_t line;               ///< from 1; a line ends with LF, CR or CR LF
  int64_t column;             ///< in characters, from 1
  int64_t offset;             ///< in bytes, from 0
} ztCAD_Place;

/// A finding. Its texts are UTF-8 and belong to the review.
typedef struct ztCAD_Finding {  // NOLINT(modernize-use-using): C reads it too
  int32_t severity;             ///< a `ztCAD_Severity`
  const char* rule;             ///< the name of its rule, such as "missing-centre"
  const char* message;          ///< one sentence, with the values that were found and expected
  ztCAD_Place place;            ///< of the "<" of the element's start tag, or of the attribute's name
  const char* path;       ///< such as "/GMD/structure[1]/point[2]/@center"; empty outside the root element
  const char* attribute;  ///< name of the attribute; null if the finding is about none
  int32_t kind;           ///< kind of the nearest element of the format, a `ztCAD_ElementKind`; 0: none
  const char* name;       ///< name of that element in the text; null if there is none
  int64_t count;          ///< how often it occurs: 1, or more for findings of one kind in one list
  const ztCAD_Place* places;  ///< for a finding that may occur several times: the first places; else null
  int32_t placeCount;         ///< their number
} ztCAD_Finding;

/// A finished review. Handles belong to the host, which ends each one with `ztCAD_endReview`.
ZTCAD_STRUCT(ztCAD_Review);

/// Loads a file and reports what was found. The findings are in the order of the text.
/// @param limit   greatest number of findings to keep, the first ones; the others are counted. Negative: all
/// @param outcome output, as for `ztCAD_loadDocument`; may be null
/// @return a review, also of a document that did not load; null when memory runs out
ZTCAD_NODISCARD ZTCAD_API ztCAD_Review* ztCAD_reviewFile(const char* fileName, int64_t limit,
                                                         ztCAD_Outcome* outcome);

/// The same for a text in memory, as `ztCAD_loadDocumentFromText` reads it.
/// @param text `size` bytes; null counts as empty
/// @param size negative: the text ends at its first zero byte
ZTCAD_NODISCARD ZTCAD_API ztCAD_Review* ztCAD_reviewText(const char* text, int64_t size, int64_t limit,
                                                         ztCAD_Outcome* outcome);

/// The number of findings that were kept; 0 for null.
ZTCAD_API int64_t ztCAD_findingCount(const ztCAD_Review* review);

/// The number of findings of a severity that were not kept because of the limit; 0 for null.
ZTCAD_API int64_t ztCAD_omittedFindings(const ztCAD_Review* review, int32_t severity);

/// The finding at an index from 0, in the order of the text.
/// @return null for a null review or an index out of range; otherwise valid until the review is ended
ZTCAD_API const ztCAD_Finding* ztCAD_findingAt(const ztCAD_Review* review, int64_t index);

/// A finding that a host adds to a review. Its texts are UTF-8 and copied.
typedef struct ztCAD_AddedFinding {  // NOLINT(modernize-use-using): C reads it too
  int32_t severity;                  ///< a `ztCAD_Severity`
  const char* rule;                  ///< a name in lower case with hyphens, not one of the library's rules
  const char* message;               ///< one sentence
  /// The element that the finding is about, at the address where the review loaded it; null: the document.
  const ztCAD_Base* element;
  const char* attribute;  ///< the attribute; null or not in the text: the finding is about the element
  int64_t count;          ///< how often it occurs; less than 1 counts as 1
} ztCAD_AddedFinding;

/// Adds findings of the host's own, for example about the geometry. They get the line, column, offset, path
/// and name of their element in the text, and their place in the order of the text: after findings at the
/// same place. The limit of the review holds for all findings together; what exceeds it is counted.
///
/// Each call makes one pass over the text, so add all findings with one call. Pointers from `ztCAD_findingAt`
/// are invalid afterwards. The document may have been taken: elements are known by their addresses.
/// @param findings array of `count`; null or `count` below 1: nothing is added
/// @return false, and nothing was added: null, no document was read, an element is not one that the review
///         read, a severity is unknown, or memory ran out
ZTCAD_API bool ztCAD_addFindings(ztCAD_Review* review, const ztCAD_AddedFinding* findings, int64_t count);

/// The document that the review loaded, which then belongs to the host as one from `ztCAD_loadDocument` does.
/// @return null if no document was read, or if it was taken before
ZTCAD_NODISCARD ZTCAD_API ztCAD_GMDDocument* ztCAD_takeReviewedDocument(ztCAD_Review* review);

/// Ends a review with its findings, and with its document if that was not taken. Null: nothing happens.
ZTCAD_API void ztCAD_endReview(ztCAD_Review* review);

/// A rule: a sort of finding. Its texts are static.
typedef struct ztCAD_Rule {  // NOLINT(modernize-use-using): C reads it too
  const char* name;          ///< stable; lower case, with hyphens
  int32_t severity;          ///< a `ztCAD_Severity`: the highest that its findings have
  const char* since;         ///< the version of the library that reported it first, "major.minor"
  const char* sentence;      ///< what it means, in one sentence
} ztCAD_Rule;

/// The number of rules.
ZTCAD_API int32_t ztCAD_ruleCount(void);

/// The rule at an index from 0, in alphabetical order of names.
/// @return null for an index out of range
ZTCAD_API const ztCAD_Rule* ztCAD_ruleAt(int32_t index);

/// The word for a kind of element, such as "point" or "template-structure".
/// @param kind a `ztCAD_ElementKind`
/// @return static text; empty for any other number
ZTCAD_API const char* ztCAD_kindWord(int32_t kind);

ZTCAD_C_END
