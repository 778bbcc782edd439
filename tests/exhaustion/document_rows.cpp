#include "scratch_folder.h"
#include "trial.h"

#include <filesystem>

namespace exhaustion {

namespace {

/// A document with an element of every kind.
std::string plainText() { return bytesOf(ZTCAD_TEST_GOLDEN_FOLDER "/P_every_kind.xml"); }
/// The same, which the reader of plain XML refuses.
std::string treeText() { return plainText() + "<?end a?b?>"; }
/// Nested structures of every kind.
std::string nestedText() { return bytesOf(ZTCAD_TEST_GOLDEN_FOLDER "/P_structures_of_every_kind.xml"); }

const std::string* kept(std::string text) { return new std::string(std::move(text)); }
const std::string* fileWith(const std::string& text) {
  const std::string name = processFolder() + ".xml";
  putBytes(name, text);
  return kept(name);
}

Report reportOf(bool succeeded) { return succeeded ? Report::Success : Report::Failure; }

/// The outputs of the functions that load.
struct Outputs {
  ztCAD_GMDDocument* document = nullptr;
  std::int32_t code = ztCAD_ResultNotParsed;
  bool succeeded = false;
  bool fault = false;
  int line = 0;
  int column = 0;
  std::string message;
  char buffer[200] = "";
  ztCAD_Outcome outcome = {};

  std::string state() const {
    if (succeeded) return print(document) + std::to_string(code);
    const bool isFilled = document && ztCAD_countInDoc(document, ztCAD_ElementPoint) > 0;
    return std::string("not loaded") + (isFilled ? ", but filled" : "") + (code == 0 ? ", but code 0" : "");
  }
};

/// @param load fills the outputs
template <typename Load>
Trial loads(Load load) {
  auto* const loaded = new Outputs;
  return {[=] {
            load(*loaded);
            return reportOf(loaded->succeeded);
          },
          [=] { return loaded->state(); }};
}

Trial loadsFile(const std::string& text) {
  return loads([file = fileWith(text)](Outputs& loaded) {
    loaded.document = crtGMDDocumentFromFile(*file, loaded.code, loaded.fault);
    loaded.succeeded = loaded.code == 0;
  });
}

/// A load that fails, and is reported as a message.
Trial loadsInvalidFile(const std::string& text) {
  Trial trial = loadsFile(text);
  trial.call = [call = trial.call] { return call(), Report::Nothing; };
  return trial;
}

Trial loadsString(std::string text) {
  return loads([xml = kept(std::move(text))](Outputs& loaded) {
    loaded.document =
        crtGMDDocumentFromStdString(*xml, loaded.succeeded, loaded.message, loaded.line, loaded.column);
  });
}

/// A load that returns null when it fails.
template <typename Load>
Trial loadsOrNull(Load load) {
  return loads([=](Outputs& loaded) {
    loaded.document = load(&loaded.outcome);
    loaded.code = loaded.outcome.code;
    loaded.succeeded = loaded.document != nullptr;
  });
}

Trial loadsText(std::string text) {
  return loadsOrNull([xml = kept(std::move(text))](ztCAD_Outcome* outcome) {
    return ztCAD_loadDocumentFromText(xml->data(), static_cast<std::int64_t>(xml->size()), outcome);
  });
}

/// A load into an existing document.
template <typename Load>
Trial reloads(Load load) {
  ztCAD_GMDDocument* const document = crtGMDDocument(longText());
  addPointToDoc(pointNamed("earlier"), document);
  return {[=] { return reportOf(load(document)); }, [=] { return print(document); }};
}

/// A save. The target exists, in a folder of its own in which no other file may be left.
template <typename Save>
Trial saves(Save save) {
  ztCAD_GMDDocument* const document = fullDocument();
  auto* const target = new std::string;
  return {[=] { return save(document, *target); },
          [=] {
            std::string state = bytesOf(*target);
            for (const auto& entry : std::filesystem::directory_iterator(processFolder()))
              state += entry.path().filename().string() + ' ';
            return state;
          },
          [=] {
            std::filesystem::create_directory(processFolder());
            *target = processFolder() + "/saved.xml";
            putBytes(*target, "earlier");
          },
          [] { std::filesystem::remove_all(processFolder()); }};
}

Trial converts(bool textForm, bool toBuffer) {
  const ztCAD_GMDDocument* const document = ztCAD_loadDocumentFromText(plainText().c_str(), -1, nullptr);
  if (toBuffer) {
    return writes([=](char* buffer, std::int64_t size) {
      return GMDDocumentToString_nostl(document, textForm, buffer, size);
    });
  }
  auto* const text = new std::string;
  return {[=] {
            GMDDocumentToString(document, *text, textForm);
            return Report::Nothing;
          },
          [=] { return *text; }};
}

const Row creations[] = {
    {"crtGMDDocument", "", [] { return creates([] { return crtGMDDocument(longText()); }); }},
    {"crtGMDDocument_nostl", "",
     [] { return creates([] { return crtGMDDocument_nostl(longText().c_str()); }); }},
    {"crtGMDDocumentFromFile", "", [] { return loadsFile(plainText()); }},
    {"crtGMDDocumentFromFile", "nested structures", [] { return loadsFile(nestedText()); }},
    {"crtGMDDocumentFromFile", "not plain XML", [] { return loadsFile(treeText()); }},
    {"crtGMDDocumentFromFile", "not well-formed", [] { return loadsInvalidFile("<GMD>"); }},
    {"crtGMDDocumentFromFile", "another root", [] { return loadsInvalidFile("<XML/>"); }},
    {"crtGMDDocumentFromFile_nostl", "",
     [] {
       return loads([file = fileWith(plainText())](Outputs& loaded) {
         loaded.document = crtGMDDocumentFromFile_nostl(file->c_str(), loaded.code, loaded.fault);
         loaded.succeeded = loaded.code == 0;
       });
     }},
    {"crtGMDDocumentFromStdString", "", [] { return loadsString(plainText()); }},
    {"crtGMDDocumentFromStdString", "not plain XML", [] { return loadsString(treeText()); }},
    {"crtGMDDocumentFromStdString_nostl", "",
     [] {
       return loads([xml = kept(plainText())](Outputs& loaded) {
         loaded.document = crtGMDDocumentFromStdString_nostl(xml->c_str(), loaded.succeeded, loaded.buffer,
                                                             200, loaded.line, loaded.column);
       });
     }},
    {"ztCAD_loadDocument", "",
     [] {
       return loadsOrNull([file = fileWith(plainText())](ztCAD_Outcome* outcome) {
         return ztCAD_loadDocument(file->c_str(), outcome);
       });
     }},
    {"ztCAD_loadDocumentFromText", "", [] { return loadsText(plainText()); }},
    {"ztCAD_loadDocumentFromText", "nested structures", [] { return loadsText(nestedText()); }},
    {"ztCAD_loadDocumentFromText", "not plain XML", [] { return loadsText(treeText()); }},
};

const Row changesOfDocuments[] = {
    {"ztCAD_reloadDocument", "",
     [] {
       return reloads([file = fileWith(plainText())](ztCAD_GMDDocument* document) {
         ztCAD_Outcome outcome;
         return ztCAD_reloadDocument(document, file->c_str(), &outcome);
       });
     }},
    {"UpdateGMDDoc", "",
     [] {
       return reloads([file = fileWith(plainText())](ztCAD_GMDDocument* document) {
         std::int32_t code = -1;
         bool fault = false;
         UpdateGMDDoc(document, *file, code, fault);
         return code == 0;
       });
     }},
    {"UpdateGMDDoc_nostl", "",
     [] {
       return reloads([file = fileWith(plainText())](ztCAD_GMDDocument* document) {
         std::int32_t code = -1;
         bool fault = false;
         UpdateGMDDoc_nostl(document, file->c_str(), code, fault);
         return code == 0;
       });
     }},
    {"ztCAD_saveDocument", "",
     [] {
       return saves([](ztCAD_GMDDocument* document, const std::string& file) {
         ztCAD_Outcome outcome;
         return reportOf(ztCAD_saveDocument(document, file.c_str(), &outcome));
       });
     }},
    {"SaveGMDDocument", "",
     [] {
       return saves([](ztCAD_GMDDocument* document, const std::string& file) {
         SaveGMDDocument(document, file);
         return Report::Nothing;
       });
     }},
    {"SaveGMDDocument_nostl", "",
     [] {
       return saves([](ztCAD_GMDDocument* document, const std::string& file) {
         SaveGMDDocument_nostl(document, file.c_str());
         return Report::Nothing;
       });
     }},
    {"setHeader", "",
     [] {
       ztCAD_HeaderNode* const header = crtHeader();
       ztCAD_setHeaderText(header, ztCAD_HeaderInform, longText().c_str());
       return changes(crtGMDDocument(""), [=](ztCAD_GMDDocument* document) { setHeader(header, document); });
     }},
};

const Row queries[] = {
    {"GMDDocumentToString", "in XML", [] { return converts(false, false); }},
    {"GMDDocumentToString", "as text", [] { return converts(true, false); }},
    {"GMDDocumentToString_nostl", "in XML", [] { return converts(false, true); }},
    {"GMDDocumentToString_nostl", "as text", [] { return converts(true, true); }},
    {"checkGMDDocument", "",
     [] { return answers([document = fullDocument()] { return checkGMDDocument(document); }); }},
    {"ztCAD_getHeader", "",
     [] { return points([document = crtGMDDocument("")] { return ztCAD_getHeader(document); }); }},
    {"crtHeader", "", [] { return creates(crtHeader); }},
    {"ztCAD_getHeaderNumber", "",
     [] {
       return answers([header = crtHeader()] {
         return ztCAD_getHeaderNumber(header, ztCAD_HeaderMajorVersion, nullptr);
       });
     }},
    {"ztCAD_setHeaderNumber", "",
     [] {
       return changes(crtHeader(), [](ztCAD_HeaderNode* header) {
         const std::uint32_t number = 5;
         ztCAD_setHeaderNumber(header, ztCAD_HeaderMajorVersion, &number);
       });
     }},
    {"ztCAD_getHeaderText", "",
     [] {
       ztCAD_HeaderNode* const header = crtHeader();
       ztCAD_setHeaderText(header, ztCAD_HeaderInform, longText().c_str());
       return writes([=](char* buffer, std::int64_t size) {
         return ztCAD_getHeaderText(header, ztCAD_HeaderInform, buffer, size);
       });
     }},
    {"ztCAD_setHeaderText", "",
     [] {
       return changes(crtHeader(), [](ztCAD_HeaderNode* header) {
         ztCAD_setHeaderText(header, ztCAD_HeaderInform, longText().c_str());
       });
     }},
};

/// A document that is gone has no state; the trial shows that the process survives.
template <typename End>
Trial ends(End end) {
  return {[=, document = fullDocument()] { return end(document), Report::Nothing; },
          [] { return std::string(); }};
}

const Row endings[] = {
    {"ztCAD_endDocument", "", [] { return ends(ztCAD_endDocument); }},
    {"DeleteGMDDoc", "", [] { return ends(DeleteGMDDoc); }},
    {"ClearGMDDoc", "",
     [] {
       bool parsed = false;
       std::string message;
       int line = 0;
       int column = 0;
       ztCAD_GMDDocument* const document = crtGMDDocumentFromStdString(
           "<GMD><structure><structure/></structure></GMD>", parsed, message, line, column);
       return Trial{[] { return ClearGMDDoc(), Report::Nothing; }, [=] { return print(document); }};
     }},
};

}  // namespace

std::vector<Row> documentRows() {
  std::vector<Row> rows(std::begin(creations), std::end(creations));
  rows.insert(rows.end(), std::begin(changesOfDocuments), std::end(changesOfDocuments));
  rows.insert(rows.end(), std::begin(queries), std::end(queries));
  rows.insert(rows.end(), std::begin(endings), std::end(endings));
  return rows;
}

}  // namespace exhaustion
