#pragma once

#include <cstdint>
#include <string>

#include "../core/document/document.h"
#include "c/documents.h"

/// @file
/// Documents, with texts as `std::string`. c/documents.h declares all other functions, and states the rules
/// that apply to these too.

extern "C" {

/// Like `crtGMDDocument_nostl`.
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument(const std::string& inform);

/// Like `crtGMDDocumentFromFile_nostl`.
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromFile(const std::string& fileName, std::int32_t& resultCode,
                                                    bool& fault);

/// Like `crtGMDDocumentFromStdString_nostl`.
/// @param message output: the parser's whole message, empty after a success
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromStdString(const std::string& xml, bool& parsed,
                                                         std::string& message, int& line, int& column);

/// The document as text, UTF-8.
/// @param text     output; empty if the document is null
/// @param textForm which of two texts, not the `debugForm` of single elements. True: header and elements as
///                 they are now, in the diagnostic form. False: the XML that was loaded last, whatever
///                 changed since, then " header state=" and the header's text
ZTCAD_API void GMDDocumentToString(const ztCAD_GMDDocument* document, std::string& text, bool textForm);

/// Like `SaveGMDDocument_nostl`.
ZTCAD_API void SaveGMDDocument(ztCAD_GMDDocument* document, const std::string& fileName);

/// Like `UpdateGMDDoc_nostl`.
ZTCAD_API void UpdateGMDDoc(ztCAD_GMDDocument* document, const std::string& fileName,
                            std::int32_t& resultCode, bool& fault);
}
