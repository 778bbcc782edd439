#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../check/finding.h"
#include "../loaded_document.h"
#include "../scene.h"
#include "element_list.h"
#include "shape_list.h"
#include "source_lines.h"

namespace cli {

/// A finding, with what a page needs to show it.
struct ShownFinding {
  Finding finding;
  std::int64_t element = ElementList::none;  // index of the element that it is about
  /// Where on a mesh it is, in the frame of the shape: facets as three points, edges as two, vertices as one.
  std::vector<std::vector<Position>> spots{};
  std::vector<SourceLine> lines{};
};

/// What the libraries find in a document: as `ztcad check` reports it, with places.
class FindingList {
 public:
  /// Findings that a page shows; of more, the most severe are kept.
  static constexpr std::size_t most = 5000;

  /// @param review   of the document, which was taken from it; gets the findings of the scene
  /// @param elements of the document; empty if none was read
  /// @param scene    null if no document was read
  /// @param bytes    the document as it is in its file
  FindingList(ztCAD_Review* review, const ElementList& elements, ztCADInspect_Scene* scene,
              std::string_view bytes);

  /// In the order of the text.
  const std::vector<ShownFinding>& findings() const { return m_findings; }
  std::int64_t omitted() const { return m_omitted; }
  bool hasErrors() const { return m_hasErrors; }

 private:
  void keepMostSevere();
  void addLines(std::string_view bytes);

  std::vector<ShownFinding> m_findings;
  std::int64_t m_omitted = 0;
  bool m_hasErrors = false;
};

}  // namespace cli
