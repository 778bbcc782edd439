#pragma once

#include <cstdint>
#include <string>

#include "../core/document/document.h"

/// Documents: made, loaded, saved, told as text, deleted.
///
/// Holds for all functions: texts and file names are UTF-8, else windows-1251 (file names: the system's
/// narrow encoding); a null document fails as each function says and never crashes; no exception comes out;
/// the library is used from one thread at a time. Documents belong to the host, which ends them with
/// `DeleteGMDDoc`.

extern "C" {

/// A new empty document.
/// @param inform the header's "inform"
/// @return null when there is no memory
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument(const std::string& inform);
/// The same from zero-terminated text; null counts as empty.
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument_nostl(const char* inform);

/// A header in which every field is absent. It belongs to the library.
ZTCAD_API ztCAD_HeaderNode* crtHeader();
/// Copies every field of `header` into the document's header, absent ones too. Null: nothing happens.
ZTCAD_API void setHeader(const ztCAD_HeaderNode* header, ztCAD_GMDDocument* document);

/// A new document with the content of a file. The document comes back, empty, also when loading fails.
/// @param resultCode output: 0 loaded; 100 no such file; a code of `QFile::error()` when it does not open;
///                   110 not well-formed or refused; 120 the root is no "GMD", or the document check failed
///                   (then the document
///                   is filled all the same)
/// @param fault      output: whether a child of the root could not read itself
/// @return null when there is no memory for a document
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromFile(const std::string& fileName, std::int32_t& resultCode,
                                                    bool& fault);

/// A new document with the content of a text. Text that is valid UTF-8 is read as text, whatever encoding it
/// declares; other bytes are read in the encoding that they declare. What a failed parse left is in the
/// document.
/// @param parsed  output: whether the text is well-formed
/// @param message output: the parser's message, empty after a success
/// @param line, column output: where the parser gave up, from 1; 0 after a success
/// @return null when there is no memory for a document
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed,
                                                         std::string& message, int& line, int& column);

/// The document as text, UTF-8.
/// @param text     output; emptied when the document is null
/// @param textForm true: header and elements as they are now, for people; false: the XML that was loaded
///                 last, then " header state=" and the header's text
ZTCAD_API void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm);

/// Makes the names of the document unique and writes it as XML in windows-1251. A save that fails leaves an
/// earlier file of that name as it was; nothing is reported. Null: nothing happens.
ZTCAD_API void SaveGMDDocument(ztCAD_GMDDocument* document, const std::string& fileName);
/// The same with a zero-terminated file name.
ZTCAD_API void SaveGMDDocument_nostl(ztCAD_GMDDocument* document, const char* fileName);

/// Runs `ClearGMDDoc`, then loads the file into the document; results as `crtGMDDocumentFromFile` gives them,
/// 110 for a null document. A file that does not load leaves the document's own elements as they were.
ZTCAD_API void UpdateGMDDoc(ztCAD_GMDDocument* document, const std::string& fileName,
                            std::int32_t& resultCode, bool& fault);

/// Destroys every structure that was made by reading, those in other documents that are alive included.
ZTCAD_API void ClearGMDDoc();

/// Ends a document, with all that `ClearGMDDoc` does: another document keeps what stands at its top level, structures
/// included, and what the host built itself; structures that reading nested in its structures are gone from them, with all
/// that was in them. Save a document that has such before another one is deleted. Null, a document that was deleted already
/// and any other pointer: nothing happens. A document that is never deleted is released when the library is unloaded,
/// without what it owns.
ZTCAD_API void DeleteGMDDoc(ztCAD_GMDDocument* document);

/// Whether the names of templates are unique in each kind (template lines excepted) and every structure is
/// sound. This is the check that loading makes. False for null.
ZTCAD_API bool checkGMDDocument(const ztCAD_GMDDocument* document);
}
