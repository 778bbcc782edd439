#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "../../structure/structure.h"
#include "../container.h"
#include "header.h"

class QString;
namespace ztcad {
class LoadedText;
class RootReader;
}  // namespace ztcad

/// The elements of a document, one container per kind, in the order in which names are made unique.
struct ZTCAD_API ztCAD_DocumentContent {
  ztCAD_Cont<ztCAD_Structure> structures;
  ztCAD_Cont<ztCAD_StructureRef> structureReferences;
  ztCAD_Cont<ztCAD_TmplStructure> templateStructures;
  ztCAD_Cont<ztCAD_Point> points;
  ztCAD_Cont<ztCAD_Line> lines;
  ztCAD_Cont<ztCAD_Sphere> spheres;
  ztCAD_Cont<ztCAD_Triangle> triangles;
  ztCAD_Cont<ztCAD_ElementMIP> mipElements;
  ztCAD_Cont<ztCAD_Detail> details;
  ztCAD_Cont<ztCAD_DetailRef> detailReferences;
  ztCAD_Cont<ztCAD_TmplDetail> templateDetails;
  ztCAD_Cont<ztCAD_TmplPoint> templatePoints;
  ztCAD_Cont<ztCAD_PointRef> pointReferences;
  ztCAD_Cont<ztCAD_TmplLine> templateLines;
  ztCAD_Cont<ztCAD_LineRef> lineReferences;
  ztCAD_Cont<ztCAD_TmplElementMIP> templateMipElements;
  ztCAD_Cont<ztCAD_ElementMipRef> mipReferences;
  ztCAD_Cont<ztCAD_TmplTriangle> templateTriangles;
  ztCAD_Cont<ztCAD_TriangleRef> triangleReferences;
  ztCAD_Cont<ztCAD_empty_stub_class> stubs;  ///< for a kind that does not exist; always empty

  void swap(ztCAD_DocumentContent& other) noexcept;
};

/// A geometry document: a header and named elements. It owns all of them; documents are not copied.
///
/// Destroying a document also destroys every structure that was made by reading, those of other documents
/// included.
class ZTCAD_API ztCAD_GMDDocument : public ztCAD_ISerialize {
 public:
  /// Results of loading. A file that does not open gives the code of `QFile::error()` instead.
  enum ResultCode : std::int32_t {
    Loaded = 0,
    FileMissing = 100,
    NotParsed = 110,
    NotADocument = 120,  ///< wrong root element, or the document check failed
  };

  /// @param inform the header's "inform"; UTF-8, else windows-1251
  explicit ztCAD_GMDDocument(const std::string& inform);
  ~ztCAD_GMDDocument() override;
  ztCAD_GMDDocument(const ztCAD_GMDDocument&) = delete;
  ztCAD_GMDDocument& operator=(const ztCAD_GMDDocument&) = delete;

  const ztCAD_HeaderNode& header() const { return m_header; }
  void setHeader(const ztCAD_HeaderNode& header) { m_header = header; }
  ztCAD_DocumentContent& content() { return m_content; }
  const ztCAD_DocumentContent& content() const { return m_content; }

  /// Makes names unique (in this document, not only in the file) and writes the file. Nothing is reported. A
  /// save that fails leaves an earlier file of that name as it was.
  /// @param fileName UTF-8, else the system's narrow encoding
  void saveToFile(const std::string& fileName);

  /// Replaces the content by that of the file, makes names unique and checks the document. When the result is
  /// `FileMissing`, `NotParsed`, a file error or "wrong root", the document stays as it was.
  /// @param fileName   UTF-8, else the system's narrow encoding
  /// @param resultCode output: `ResultCode` or a `QFile::FileError`
  /// @param fault      output: whether a child of the root could not read itself
  /// @return whether there was content to read; also true when the check failed
  bool loadFromFile(const std::string& fileName, std::int32_t& resultCode, bool& fault);

  /// Replaces the content by that of `xml` and makes names unique. What a failed parse left is read too.
  /// @param parsed output: whether `xml` is well-formed
  /// @param line, column output: where the parser gave up; 0 after a success
  /// @return the parser's message, empty after a success
  std::string loadFromString(const std::string& xml, bool& parsed, int& line, int& column);

  /// The document for people, one line for each element. Always the same form, whatever `debugForm` says.
  QString& toText(QString& out, bool debugForm) const override;

  /// The text of the tree that was loaded last (not of the elements as they are now), then the header's text.
  std::string xmlText() const;

 private:
  void takeOver(ztcad::RootReader& reader, std::unique_ptr<ztcad::LoadedText> text) noexcept;

  ztCAD_DocumentContent m_content;
  std::unique_ptr<ztcad::LoadedText> m_loaded;  // never null
  ztCAD_HeaderNode m_header;
};
