#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "../../structure/structure.h"
#include "../container.h"
#include "header.h"

class QString;
namespace ztcad {
class DocumentLoader;
struct EndAlone;
class LoadedText;
}  // namespace ztcad

/// @file
/// Documents: loading, saving, text.

/// The elements of a document: one container for each kind.
struct ZTCAD_API ztCAD_DocumentContent {
  ztCAD_Cont<ztCAD_Structure> structures;                ///< top-level structures
  ztCAD_Cont<ztCAD_StructureRef> structureReferences;    ///< placed template structures
  ztCAD_Cont<ztCAD_TmplStructure> templateStructures;    ///< structures kept as templates
  ztCAD_Cont<ztCAD_Point> points;                        ///< named positions
  ztCAD_Cont<ztCAD_Line> lines;                          ///< polylines
  ztCAD_Cont<ztCAD_Sphere> spheres;                      ///< solids given by centre and radius
  ztCAD_Cont<ztCAD_Triangle> triangles;                  ///< solids given by vertices and facets
  ztCAD_Cont<ztCAD_ElementMIP> mipElements;              ///< mass-inertia records by themselves
  ztCAD_Cont<ztCAD_Detail> details;                      ///< rigid parts
  ztCAD_Cont<ztCAD_DetailRef> detailReferences;          ///< placed template details
  ztCAD_Cont<ztCAD_TmplDetail> templateDetails;          ///< details kept as templates
  ztCAD_Cont<ztCAD_TmplPoint> templatePoints;            ///< points kept as templates
  ztCAD_Cont<ztCAD_PointRef> pointReferences;            ///< placed template points
  ztCAD_Cont<ztCAD_TmplLine> templateLines;              ///< polylines kept as templates
  ztCAD_Cont<ztCAD_LineRef> lineReferences;              ///< placed template lines
  ztCAD_Cont<ztCAD_TmplElementMIP> templateMipElements;  ///< mass-inertia elements kept as templates
  ztCAD_Cont<ztCAD_ElementMipRef> mipReferences;         ///< placed template mass-inertia elements
  ztCAD_Cont<ztCAD_TmplTriangle> templateTriangles;      ///< solids kept as templates
  ztCAD_Cont<ztCAD_TriangleRef> triangleReferences;      ///< placed template solids
  ztCAD_Cont<ztCAD_empty_stub_class> stubs;              ///< for a kind that does not exist; always empty

  /// Exchanges the elements of all kinds; addresses of stored elements stay valid.
  void swap(ztCAD_DocumentContent& other) noexcept;
};

/// A geometry document: a header and named elements, which it owns. Documents cannot be copied.
///
/// Nested structures that `loadFromFile` and `loadFromString` read are in one list that all documents share,
/// and destroying any document by its destructor empties that list. Documents loaded by `ztCAD_loadDocument`
/// own theirs, and `ztCAD_endDocument` leaves the list alone.
class ZTCAD_API ztCAD_GMDDocument : public ztCAD_ISerialize {
 public:
  /// Results of loading. A file that cannot be opened or read gives the code of `QFile::error()` instead.
  enum ResultCode : std::int32_t {
    Loaded = 0,          ///< loaded, and the check passes
    FileMissing = 100,   ///< there is no such file
    NotParsed = 110,     ///< not well-formed, or refused
    NotADocument = 120,  ///< wrong root element, or the document check failed
  };

  /// A document without elements.
  /// @param inform the header's "inform"; UTF-8, else windows-1251
  explicit ztCAD_GMDDocument(const std::string& inform);
  /// Destroys the document, its elements, and every structure in the list that all documents share.
  ~ztCAD_GMDDocument() override;
  ztCAD_GMDDocument(const ztCAD_GMDDocument&) = delete;
  ztCAD_GMDDocument& operator=(const ztCAD_GMDDocument&) = delete;

  /// The header. The reference is valid as long as the document; setting copies every field.
  /// @{
  const ztCAD_HeaderNode& header() const { return m_header; }
  void setHeader(const ztCAD_HeaderNode& header) { m_header = header; }
  /// @}

  /// The elements. The reference is valid as long as the document; loading replaces the elements in the
  /// containers.
  /// @{
  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_DocumentContent& content() const { return m_content; }
  /// @}

  /// Makes names unique (in this document, not only in the file) and writes the file. Reports nothing
  /// (`ztCAD_saveDocument` does, and states the guarantees).
  /// @param fileName passed to the system unchanged; on Windows UTF-8, else the system's narrow encoding
  void saveToFile(const std::string& fileName);

  /// Replaces the content by that of the file, makes names unique and checks the document. If the file is
  /// missing, cannot be read, is not well-formed or has a wrong root, the document is unchanged.
  /// @param fileName   passed to the system unchanged; on Windows UTF-8, else the system's narrow encoding
  /// @param resultCode output: `ResultCode` or a `QFile::FileError`
  /// @param fault      output: whether a child of the root failed to read itself
  /// @return whether the content was replaced, which it is also if the check failed
  bool loadFromFile(const std::string& fileName, std::int32_t& resultCode, bool& fault);

  /// Replaces the content by that of `xml` and makes names unique. If `xml` is not well-formed, the content
  /// is what comes before the error. Any root element is accepted, and there is no check.
  /// @param parsed       output: whether `xml` is well-formed
  /// @param line, column output: position of the error, from 1; 0 after a success
  /// @return the parser's message, empty after a success
  std::string loadFromString(const std::string& xml, bool& parsed, int& line, int& column);

  /// Header and elements in the diagnostic form; `debugForm` is ignored. Template solids and references to
  /// them are left out.
  QString& toText(QString& out, bool debugForm) const override;

  /// The XML that was loaded last (not the elements as they are now), then " header state=" and the header's
  /// text.
  std::string xmlText() const;

 private:
  friend class ztcad::DocumentLoader;
  friend struct ztcad::EndAlone;

  ztCAD_DocumentContent m_content;
  std::unique_ptr<ztcad::LoadedText> m_loaded;  // never null
  ztCAD_HeaderNode m_header;
  std::vector<std::unique_ptr<ztCAD_Base>> m_ownStructures;  // nested ones that end with this document
  bool m_endsSharedStructures = true;
};
