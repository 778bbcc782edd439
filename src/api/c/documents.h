#pragma once

#include "types.h"

/// @file
/// Documents: create, load, save, print, end.
///
/// Texts are UTF-8, else windows-1251. File names are passed to the system unchanged; on Windows they are
/// UTF-8, else in the system's narrow encoding. A null text counts as empty. A null document fails as each
/// function states, and so does a pointer that is no live document. No function throws. The library is
/// not thread-safe: call it from one thread at a time.
///
/// Documents belong to the host, which ends each one with `ztCAD_endDocument` (or with `DeleteGMDDoc`, which
/// also affects other documents).
///
/// Functions that return a text write it into the host's buffer of `size` bytes and return its length in
/// bytes without the terminating zero. A text that does not fit with its zero is not written: the buffer then
/// holds an empty text, and a second call with `length + 1` bytes gets the text. The buffer may be null if
/// only the length is wanted. If there is no text, the result is -1 and the buffer holds an empty text.

ZTCAD_C_BEGIN

/// A new empty document.
/// @param inform the header's "inform"
/// @return null when memory runs out
ZTCAD_API ztCAD_GMDDocument* crtGMDDocument_nostl(const char* inform);

// -------------------------------------------------------------------------------- load, save, end

/// Results of loading. A file that cannot be opened or read, or is no regular file, gives the code that
/// `QFile::error()` has for this, which is below 100.
enum ztCAD_ResultCode {
  ztCAD_ResultLoaded = 0,         ///< the document is loaded and passes the check
  ztCAD_ResultFileMissing = 100,  ///< there is no such file
  ztCAD_ResultNotParsed = 110,    ///< the text is not well-formed, or was refused, or memory ran out
  ztCAD_ResultNotADocument = 120  ///< the root element is not "GMD", or the document check failed
};

/// Bytes of a message in a `ztCAD_Outcome`, terminating zero included.
enum { ztCAD_MessageSize = 256 };

/// The outcome of a load or save. Each call fills every field.
typedef struct ztCAD_Outcome {  // NOLINT(modernize-use-using): C reads it too
  /// Loads: a `ztCAD_ResultCode` or a code of `QFile::error()`; saves: 0 or a code of `QFile::error()`.
  int32_t code;
  /// Loads: a child of the root failed to read itself. It is in the document nevertheless.
  bool fault;
  /// Line of the problem, from 1, at most INT32_MAX; 0 if the problem has no position.
  int32_t line;
  /// Column of the problem, from 1, at most INT32_MAX, in UTF-16 units; 0 if the problem has no position.
  int32_t column;
  /// Why the code is not 0; empty if it is 0. UTF-8, zero-terminated; a message that is too long ends after a
  /// whole character.
  char message[ztCAD_MessageSize];
} ztCAD_Outcome;

/// Loads a file into a new document. It may be as large as memory; a single text of more than 1,073,741,759
/// UTF-16 units and a list of more than INT32_MAX vertices or facets are refused ("text too long", "list too
/// long"). The structures that the file nests in others belong to this document and
/// end with it; calls for other documents do not affect them.
/// @param outcome output; may be null
/// @return the document, also if its check failed (code 120); null, with nothing to end, if no document was
///         read: code 100, 110, 120 for another root element, or a file error
ZTCAD_NODISCARD ZTCAD_API ztCAD_GMDDocument* ztCAD_loadDocument(const char* fileName, ztCAD_Outcome* outcome);

/// The same for a text in memory, under the same rules. Text that is valid UTF-8 is read as UTF-8, whatever
/// encoding it declares; other bytes are decoded as declared.
/// @param text `size` bytes; null counts as empty
/// @param size negative: the text ends at its first zero byte
ZTCAD_NODISCARD ZTCAD_API ztCAD_GMDDocument* ztCAD_loadDocumentFromText(const char* text, int64_t size,
                                                                        ztCAD_Outcome* outcome);

/// Replaces the content of a document by that of a file, read as by `ztCAD_loadDocument`. The elements of the
/// earlier content are destroyed, and so are the nested structures that the document owns.
/// @param outcome output; may be null
/// @return whether the content was replaced, which it is also if the check failed; false: nothing has
///         changed, nested structures included
ZTCAD_API bool ztCAD_reloadDocument(ztCAD_GMDDocument* document, const char* fileName,
                                    ztCAD_Outcome* outcome);

/// Makes the names of the document unique, in memory too, and writes it as XML in windows-1251. A save that
/// fails leaves an earlier file of that name unchanged. (A target that is no regular file, has several hard
/// links or cannot be replaced is written directly, without this guarantee; SECURITY.md has the details.) A
/// document that is too deep to be loaded again, or has a text or list that is too long, is refused.
/// @param outcome output; may be null
/// @return whether the whole file was written
ZTCAD_NODISCARD ZTCAD_API bool ztCAD_saveDocument(ztCAD_GMDDocument* document, const char* fileName,
                                                  ztCAD_Outcome* outcome);

/// Receives the bytes of a saved document, in order. Must not throw.
/// @return false ends the save, which then fails
typedef bool (*ztCAD_WriteBytes)(const char* bytes, int64_t size, void* context);  // NOLINT

/// Saves a document as `ztCAD_saveDocument` does, but hands its bytes to a function instead of a file.
/// @param context passed to `write` unchanged
/// @param outcome output; may be null
/// @return whether all bytes were written
ZTCAD_NODISCARD ZTCAD_API bool ztCAD_saveDocumentTo(ztCAD_GMDDocument* document, ztCAD_WriteBytes write,
                                                    void* context, ztCAD_Outcome* outcome);

/// Ends a document, however it was made, with everything it owns: its elements and the nested structures that
/// `ztCAD_loadDocument`, `ztCAD_loadDocumentFromText` or `ztCAD_reloadDocument` read. Other documents are
/// unaffected. Nested structures that the older calls below read are not the document's: they stay until the
/// next `ClearGMDDoc`, `UpdateGMDDoc` or `DeleteGMDDoc`. Null and a pointer that is no live document: nothing
/// happens.
ZTCAD_API void ztCAD_endDocument(ztCAD_GMDDocument* document);

// -------------------------------------------------------------------------------- the older calls
// They report less, and the nested structures that they read are in one list that all documents share. Their
// behaviour does not change, so hosts that use them may go on doing so. docs/which-calls.md compares both
// sets.

/// A new document with the content of a file. If the load fails the document is returned too, empty; it gives
/// no message.
/// @param resultCode output: 0 loaded; 100 no such file; a code of `QFile::error()` if it cannot be opened or
///                   read; 110 not well-formed or refused; 120 the root is not "GMD" (the document is empty),
///                   or the document check failed (the document is filled)
/// @param fault      output: whether a child of the root failed to read itself
/// @return null when memory runs out
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromFile_nostl(const char* fileName, ZTCAD_OUT(int32_t) resultCode,
                                                          ZTCAD_OUT(bool) fault);

/// A new document with the content of a text. Text that is valid UTF-8 is read as UTF-8, whatever encoding it
/// declares; other bytes are decoded as declared. Any root element is accepted, and the document is not
/// checked. If the text is not well-formed, the document holds what comes before the error.
/// @param xml         zero-terminated; may be the same buffer as `message`
/// @param parsed      output: whether the text is well-formed
/// @param message     buffer for the parser's message, empty after a success; may be null
/// @param messageSize bytes in the buffer; a longer message ends after a whole character (200 bytes suffice)
/// @param line        output: line of the error, from 1; 0 after a success
/// @param column      output: column of the error, from 1; 0 after a success
/// @return null when memory runs out
ZTCAD_API ztCAD_GMDDocument* crtGMDDocumentFromStdString_nostl(const char* xml, ZTCAD_OUT(bool) parsed,
                                                               char* message, int32_t messageSize,
                                                               ZTCAD_OUT(int) line, ZTCAD_OUT(int) column);

/// The document as text, UTF-8. Each call builds the whole text. The diagnostic form is built in a QString,
/// which holds some 1,073,741,800 UTF-16 units with Qt 5.
/// @param textForm which of two texts, not the `debugForm` of single elements. True: header and elements as
///                 they are now, in the diagnostic form. False: the XML that was loaded last, whatever
///                 changed since, then " header state=" and the header's text
/// @param text     output, see above
/// @return the length of the text; -1 for a null document, and when memory runs out or the text is too long
ZTCAD_API int64_t GMDDocumentToString_nostl(const ztCAD_GMDDocument* document, bool textForm, char* text,
                                            int64_t size);

/// Saves like `ztCAD_saveDocument`, but reports nothing: a save that failed looks like one that succeeded.
/// Null: nothing happens.
ZTCAD_API void SaveGMDDocument_nostl(ztCAD_GMDDocument* document, const char* fileName);

/// Runs `ClearGMDDoc`, then replaces the content of the document by that of the file; outputs as in
/// `crtGMDDocumentFromFile_nostl`, 110 for a null document, for which `ClearGMDDoc` is not run.
///
/// If the file does not load, the elements at the top level of the document are unchanged, but the nested
/// structures that the older calls read are gone nevertheless, in this and in every other document.
/// `ztCAD_reloadDocument` has no such effect.
ZTCAD_API void UpdateGMDDoc_nostl(ztCAD_GMDDocument* document, const char* fileName,
                                  ZTCAD_OUT(int32_t) resultCode, ZTCAD_OUT(bool) fault);

/// Destroys every structure in the list that all documents share: nested structures that the older calls
/// read, and clones. They disappear from every document that holds them.
ZTCAD_API void ClearGMDDoc(void);

/// Ends a document and runs `ClearGMDDoc`. Other documents keep their top-level elements, structures
/// included, and what the host built; the nested structures that the older calls read disappear from them,
/// with everything inside. Before you delete a document, save every other one that has such structures, or
/// use `ztCAD_endDocument`.
///
/// Null, a document that was deleted already and any other pointer: nothing happens. A new document may,
/// however, get the address of a deleted one. The memory of a document that is never deleted is freed when
/// the library is unloaded, without what it owns.
ZTCAD_API void DeleteGMDDoc(ztCAD_GMDDocument* document);

/// The check that loading makes: the names of template points, template mass-inertia elements, template
/// details and template structures are unique within each kind, and every structure is sound. False for null.
ZTCAD_API bool checkGMDDocument(const ztCAD_GMDDocument* document);

// -------------------------------------------------------------------------------- the header

/// A header in which every field is absent. It belongs to the library until it is unloaded.
ZTCAD_API ztCAD_HeaderNode* crtHeader(void);
/// Copies every field of `header` into the document's header, absent ones too. Null: nothing happens.
ZTCAD_API void setHeader(const ztCAD_HeaderNode* header, ztCAD_GMDDocument* document);
/// The document's own header, which lives as long as the document; null for a null document.
ZTCAD_API const ztCAD_HeaderNode* ztCAD_getHeader(const ztCAD_GMDDocument* document);

/// The fields of a header that are numbers.
enum ztCAD_HeaderNumber {
  ztCAD_HeaderMajorVersion = 0,  ///< "majorVersion"
  ztCAD_HeaderMinorVersion = 1,  ///< "minorVersion"
  ztCAD_HeaderState = 2  ///< not in the file: 0 ok, 1 unknown, 2 warning, 3 error (a version was missing)
};
/// The fields of a header that are texts.
enum ztCAD_HeaderText {
  ztCAD_HeaderInform = 0,           ///< free text about the document
  ztCAD_HeaderProducerName = 1,     ///< written, not read: every program that writes the file sets its own
  ztCAD_HeaderProducerVersion = 2,  ///< likewise
  ztCAD_HeaderProducerPlatform = 3  ///< likewise
};

/// A number of the header.
/// @param field a `ztCAD_HeaderNumber`
/// @param value output; may be null; not written if the field is absent
/// @return whether the field is present; false for null and for an unknown field
ZTCAD_API bool ztCAD_getHeaderNumber(const ztCAD_HeaderNode* header, int32_t field, uint32_t* value);
/// Sets or clears a number of the header. A null header and an unknown field: nothing happens.
/// @param field a `ztCAD_HeaderNumber`
/// @param value the new value; null clears the field
ZTCAD_API void ztCAD_setHeaderNumber(ztCAD_HeaderNode* header, int32_t field, const uint32_t* value);
/// A text of the header.
/// @param field a `ztCAD_HeaderText`
/// @param text  output, see above
/// @return the length of the text; -1 if the field is absent, for null and for an unknown field
ZTCAD_API int64_t ztCAD_getHeaderText(const ztCAD_HeaderNode* header, int32_t field, char* text,
                                      int64_t size);
/// Sets or clears a text of the header. A null header and an unknown field: nothing happens.
/// @param field a `ztCAD_HeaderText`
/// @param text  the new text; null clears the field
ZTCAD_API void ztCAD_setHeaderText(ztCAD_HeaderNode* header, int32_t field, const char* text);

ZTCAD_C_END
