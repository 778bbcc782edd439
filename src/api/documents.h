#pragma once

#include <cstdint>
#include <string>

#include "../core/document/document.h"
#include "c/documents.h"

/// @file
/// Documents with texts as `std::string`; everything else, and what holds for all, stands in c/documents.h.

extern "C" {

/// As `crtGMDDocument_nostl`.
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument(const std::string& inform);

/// As `crtGMDDocumentFromFile_nostl`.
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromFile(const std::string& fileName, std::int32_t& resultCode,
                                                    bool& fault);

/// As `crtGMDDocumentFromStdString_nostl`.
/// @param message output: the parser's whole message, empty after a success
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed,
                                                         std::string& message, int& line, int& column);

/// The document as text, UTF-8.
/// @param text     output; emptied when the document is null
/// @param textForm true: header and elements as they are now, for people; false: the XML that was loaded
///                 last, then " header state=" and the header's text
ZTCAD_API void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm);

/// As `SaveGMDDocument_nostl`.
ZTCAD_API void SaveGMDDocument(ztCAD_GMDDocument* document, const std::string& fileName);

/// As `UpdateGMDDoc_nostl`.
ZTCAD_API void UpdateGMDDoc(ztCAD_GMDDocument* document, const std::string& fileName,
                            std::int32_t& resultCode, bool& fault);
}
