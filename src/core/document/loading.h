#pragma once

#include <cstdint>
#include <memory>
#include <QString>
#include <string>
#include <string_view>

#include "../../xml/xml_text.h"
#include "check.h"
#include "document.h"
#include "findings.h"

namespace ztcad {

class RootReader;

/// The result of a load.
struct LoadOutcome {
  std::int32_t code = ztCAD_GMDDocument::NotParsed;  ///< `ResultCode`, or a `QFile::FileError`
  bool fault = false;                                ///< a child of the root failed to read itself
  bool replaced = false;                             ///< the document has new content; false: it is unchanged
  QString message;                                   ///< why the code is not 0; empty if it is 0
  int line = 0;                                      ///< line of the problem, from 1; 0 if it has no position
  int column = 0;                                    ///< column of the problem, likewise
};

/// Which list owns the structures that a load nests in others.
enum class NestedOwner {
  Everyone,  ///< the list that all documents share, which `ClearGMDDoc` and the older calls empty
  Document,  ///< the document that is loaded
};

/// Which texts a load from memory takes.
enum class TextRules {
  Strict,   ///< what a file may be: well-formed, with the root "GMD"; then the document check
  Lenient,  ///< any root element; of an ill-formed text, what comes before the error; no document check
};

/// Loads into a document. The document is changed as a whole after everything has been read, or not at all.
class DocumentLoader {
 public:
  DocumentLoader(ztCAD_GMDDocument& document, NestedOwner owner) : m_document(document), m_owner(owner) {}
  /// Reports what it finds.
  /// @param reviewed output of a load under strict rules
  DocumentLoader(ztCAD_GMDDocument& document, NestedOwner owner, std::int64_t limit, ReviewedLoad& reviewed)
      : m_document(document),
        m_owner(owner),
        m_review(std::make_unique<Review>(limit)),
        m_reviewed(&reviewed) {}

  /// @param fileName as a host passes it, see `fileNameOf`
  LoadOutcome loadFile(std::string_view fileName);
  LoadOutcome loadText(std::string_view xml, TextRules rules);

 private:
  struct Source;
  using Reader = std::unique_ptr<RootReader>;

  LoadOutcome load(Source source, TextRules rules);
  LoadOutcome load(Source& source, TextRules rules, std::unique_ptr<XmlText>& text);
  Reader readPlain(std::string_view text, XmlBytes kind, TextRules rules) const;
  Reader readAny(const XmlText& text, TextRules rules, LoadOutcome& outcome) const;
  void takeOver(RootReader& reader, std::unique_ptr<LoadedText> text);
  LoadOutcome refuseLength() const;
  void reportAlone(Rule rule, const char* position, const QString& argument) const;
  void reviewDecoding(const Source& source, const XmlText& text) const;
  Names nameElements(RootReader& reader) const;

  ztCAD_GMDDocument& m_document;
  const NestedOwner m_owner;
  const std::unique_ptr<Review> m_review;  // null: nobody wants findings
  ReviewedLoad* const m_reviewed = nullptr;
};

/// Destroys a document and what it owns, without emptying the list of structures that all documents share.
struct EndAlone {
  void operator()(ztCAD_GMDDocument* document) const noexcept;
};

}  // namespace ztcad
