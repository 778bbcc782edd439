#pragma once

#include "types.h"

/// @file
/// Documents: made, loaded, saved, told as text, deleted.
///
/// Holds for all functions: texts and file names are UTF-8, else windows-1251 (file names: the system's
/// narrow encoding); a null text counts as empty; a null document fails as each function says and never crashes; no
/// exception comes out; the library is used from one thread at a time. Documents belong to the host, which ends them
/// with `DeleteGMDDoc`.
///
/// Functions that give a text write it into the host's buffer of `size` bytes and return its length in bytes, the
/// terminating zero not counted. A text that does not fit with its zero is not written: the buffer then holds an empty
/// text, and a second call with `length + 1` bytes gets it. Null is fine where only the length is wanted. They
/// return -1, and an empty text, where there is no text to give.

ZTCAD_C_BEGIN

/// A new empty document.
/// @param inform the header's "inform"
/// @return null when there is no memory
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument_nostl(const char* inform);

// -------------------------------------------------------------------------------- load, save, end

/// Results of loading. A file that does not open gives the code of `QFile::error()` instead, which is below 100.
enum ztCAD_ResultCode {
  ztCAD_ResultLoaded = 0,         ///< the document is loaded and passes the check
  ztCAD_ResultFileMissing = 100,  ///< there is no such file
  ztCAD_ResultNotParsed = 110,    ///< the text is not well-formed, or refused, or memory ran out
  ztCAD_ResultNotADocument = 120  ///< the root element is not "GMD", or the document check failed
};

/// Bytes of a message in a `ztCAD_Outcome`, its terminating zero included.
enum { ztCAD_MessageSize = 256 };

/// What became of a load or save.
typedef struct ztCAD_Outcome {
  int32_t
      code;  ///< loads: a `ztCAD_ResultCode` or a code of `QFile::error()`; saves: 0 or a code of `QFile::error()`
  bool fault;      ///< loads: a child of the root failed to read itself; it is in the document all the same
  int32_t line;    ///< line of the problem, from 1; 0 where it has no position
  int32_t column;  ///< column of the problem, from 1, in UTF-16 units
  char message
      [ztCAD_MessageSize];  ///< why the code is not 0, UTF-8, zero-terminated, cut after a whole character
} ztCAD_Outcome;

/// Loads a file into a new document. The structures that the load nests in others belong to the document: they end with
/// it, and not with other documents.
/// @param outcome output; null is fine
/// @return the document, also when its check failed (code 120); null, and nothing to end, for any other code
ZTCAD_API ZTCAD_NODISCARD ztCAD_GMDDocument* ztCAD_loadDocument(const char* fileName, ztCAD_Outcome* outcome);

/// The same for a text in memory. Text that is valid UTF-8 is read as such, whatever encoding it declares; other bytes
/// are decoded as they declare.
/// @param text `size` bytes; null only with 0
/// @param size negative: the text ends at its first zero
ZTCAD_API ZTCAD_NODISCARD ztCAD_GMDDocument* ztCAD_loadDocumentFromText(const char* text, int64_t size,
                                                                        ztCAD_Outcome* outcome);

/// Replaces the content of a document by that of a file, as `ztCAD_loadDocument` reads it. Elements and nested structures
/// of the earlier content end.
/// @param outcome output; null is fine
/// @return whether the content was replaced (true also when the check failed); false: the document is unchanged
ZTCAD_API bool ztCAD_reloadDocument(ztCAD_GMDDocument* document, const char* fileName,
                                    ztCAD_Outcome* outcome);

/// Makes the names of the document unique and writes it as XML in windows-1251. A save that fails leaves an earlier file
/// of that name unchanged.
/// @param outcome output; null is fine
/// @return whether the file was written
ZTCAD_API ZTCAD_NODISCARD bool ztCAD_saveDocument(ztCAD_GMDDocument* document, const char* fileName,
                                                  ztCAD_Outcome* outcome);

/// Ends a document and what it owns: its elements and the structures that `ztCAD_loadDocument` and
/// `ztCAD_reloadDocument` nested in them. Other documents are unaffected. Nested structures of the calls below are not
/// its own; they stay until `ClearGMDDoc`. Null and a pointer that is no live document: nothing happens.
ZTCAD_API void ztCAD_endDocument(ztCAD_GMDDocument* document);

// -------------------------------------------------------------------------------- load, save, end: the older calls
// They report less, and the structures that they nest in others belong to one list for all documents. Hosts that know
// them may go on using them; their behaviour does not change.

/// A new document with the content of a file. The document comes back, empty, also when loading fails.
/// @param resultCode output: 0 loaded; 100 no such file; a code of `QFile::error()` when it does not open;
///                   110 not well-formed or refused; 120 the root is no "GMD", or the document check failed
///                   (then the document is filled all the same)
/// @param fault      output: whether a child of the root could not read itself
/// @return null when there is no memory for a document
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromFile_nostl(const char* fileName, ZTCAD_OUT(int32_t) resultCode,
                                                          ZTCAD_OUT(bool) fault);

/// A new document with the content of a text. Text that is valid UTF-8 is read as text, whatever encoding it
/// declares; other bytes are read in the encoding that they declare. What a failed parse left is in the
/// document.
/// @param xml         zero-terminated; its buffer may be that of the message
/// @param parsed      output: whether the text is well-formed
/// @param message     buffer for the parser's message, which is empty after a success; null: it is not wanted
/// @param messageSize bytes in the buffer; a longer message is cut off behind a whole character (200 are plenty)
/// @param line        output: where the parser gave up, from 1; 0 after a success
/// @param column      output: likewise
/// @return null when there is no memory for a document
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromStdString_nostl(const char* xml, ZTCAD_OUT(bool) parsed,
                                                               char* message, int32_t messageSize,
                                                               ZTCAD_OUT(int) line, ZTCAD_OUT(int) column);

/// The document as text, UTF-8. Each call makes the whole text anew.
/// @param textForm true: header and elements as they are now, for people; false: the XML that was loaded
///                 last, then " header state=" and the header's text
/// @param text     output, see above
/// @return the length of the text; -1 for a null document
ZTCAD_API int64_t GMDDocumentToString_nostl(const ztCAD_GMDDocument* document, bool textForm, char* text,
                                            int64_t size);

/// Makes the names of the document unique and writes it as XML in windows-1251. A save that fails leaves an
/// earlier file of that name as it was; nothing is reported. Null: nothing happens.
ZTCAD_API void SaveGMDDocument_nostl(ztCAD_GMDDocument* document, const char* fileName);

/// Runs `ClearGMDDoc`, then loads the file into the document; results as `crtGMDDocumentFromFile_nostl` gives them,
/// 110 for a null document. A file that does not load leaves the document's own elements as they were.
ZTCAD_API void UpdateGMDDoc_nostl(ztCAD_GMDDocument* document, const char* fileName,
                                  ZTCAD_OUT(int32_t) resultCode, ZTCAD_OUT(bool) fault);

/// Destroys every structure that was made by reading, those in other documents that are alive included.
ZTCAD_API void ClearGMDDoc(void);

/// Ends a document, with all that `ClearGMDDoc` does: another document keeps what stands at its top level, structures
/// included, and what the host built itself; structures that reading nested in its structures are gone from them, with all
/// that was in them. Save a document that has such before another one is deleted. Null, a document that was deleted already
/// and any other pointer: nothing happens; but a new document may come to lie where a deleted one did. A document that is never deleted is released when the library is unloaded,
/// without what it owns.
ZTCAD_API void DeleteGMDDoc(ztCAD_GMDDocument* document);

/// Whether the names of templates are unique in each kind (template lines excepted) and every structure is
/// sound. This is the check that loading makes. False for null.
ZTCAD_API bool checkGMDDocument(const ztCAD_GMDDocument* document);

// -------------------------------------------------------------------------------- the header

/// A header in which every field is absent. It belongs to the library.
ZTCAD_API ztCAD_HeaderNode* crtHeader(void);
/// Copies every field of `header` into the document's header, absent ones too. Null: nothing happens.
ZTCAD_API void setHeader(const ztCAD_HeaderNode* header, ztCAD_GMDDocument* document);
/// The document's own header, which lives as long as the document; null for a null document.
ZTCAD_API const ztCAD_HeaderNode* ztCAD_getHeader(const ztCAD_GMDDocument* document);

/// The fields of a header that are numbers.
enum ztCAD_HeaderNumber {
  ztCAD_HeaderMajorVersion = 0,  ///< "majorVersion"
  ztCAD_HeaderMinorVersion = 1,  ///< "minorVersion"
  ztCAD_HeaderState = 2  ///< not in the file: 0 ok, 1 unknown, 2 warning, 3 error (reading found no version)
};
/// The fields of a header that are texts.
enum ztCAD_HeaderText {
  ztCAD_HeaderInform = 0,        ///< free text about the document
  ztCAD_HeaderProducerName = 1,  ///< the producer is written, but not read: it is for whoever writes to say
  ztCAD_HeaderProducerVersion = 2,  ///< likewise
  ztCAD_HeaderProducerPlatform = 3  ///< likewise
};

/// A number that the header holds.
/// @param field a `ztCAD_HeaderNumber`
/// @param value output, null is fine; not written where the field is absent
/// @return whether the field is there; false for null and for an unknown field
ZTCAD_API bool ztCAD_getHeaderNumber(const ztCAD_HeaderNode* header, int32_t field, uint32_t* value);
/// Sets a number of the header, or takes it away. A null header and an unknown field: nothing happens.
/// @param field a `ztCAD_HeaderNumber`
/// @param value what the field is to hold; null makes it absent
ZTCAD_API void ztCAD_setHeaderNumber(ztCAD_HeaderNode* header, int32_t field, const uint32_t* value);
/// A text that the header holds.
/// @param field a `ztCAD_HeaderText`
/// @param text  output, see above
/// @return the length of the text; -1 where the field is absent, for null and for an unknown field
ZTCAD_API int64_t ztCAD_getHeaderText(const ztCAD_HeaderNode* header, int32_t field, char* text,
                                      int64_t size);
/// Sets a text of the header, or takes it away. A null header and an unknown field: nothing happens.
/// @param field a `ztCAD_HeaderText`
/// @param text what the field is to hold; null makes it absent
ZTCAD_API void ztCAD_setHeaderText(ztCAD_HeaderNode* header, int32_t field, const char* text);

ZTCAD_C_END
