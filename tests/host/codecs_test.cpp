// Which of Qt's codecs the library requests: this program interposes Qt's functions that look up codecs.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <QByteArray>
#include <QTextCodec>
#include <string>
#include <vector>

#include "loaded_library.h"

namespace {

/// Names of the requested codecs.
std::vector<std::string>& requested() {
  static std::vector<std::string> names;
  return names;
}

template <typename Function>
Function* qtFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string textOfADocument(const LoadedLibrary& library, const char* encoding) {
  const std::string xml = std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?><GMD/>";
  bool parsed = false;
  std::string text;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document = library.crtGMDDocumentFromStdString(xml, parsed, text, line, column);
  EXPECT_TRUE(parsed) << text;
  library.GMDDocumentToString(document, text, false);
  library.DeleteGMDDoc(document);
  return text;
}

}  // namespace

QTextCodec* QTextCodec::codecForName(const QByteArray& name) {
  static auto* const own =
      qtFunction<QTextCodec*(const QByteArray&)>("_ZN10QTextCodec12codecForNameERK10QByteArray");
  requested().push_back(name.toStdString());
  return own(name);
}

QTextCodec* QTextCodec::codecForMib(int mib) {
  static auto* const own = qtFunction<QTextCodec*(int)>("_ZN10QTextCodec11codecForMibEi");
  requested().push_back(std::to_string(mib));
  return own(mib);
}

QTextCodec* QTextCodec::codecForLocale() {
  static auto* const own = qtFunction<QTextCodec*()>("_ZN10QTextCodec14codecForLocaleEv");
  requested().emplace_back("locale");
  return own();
}

namespace {

TEST(Codecs, NeitherTheLibraryNorADocumentRequestsOne) {
  const LoadedLibrary library;
  for (const char* const encoding : {"utf-8", "windows-1251", "koi8-r", "no-such-encoding"})
    EXPECT_NE(textOfADocument(library, encoding).find("<GMD/>"), std::string::npos) << encoding;
  EXPECT_EQ(requested(), std::vector<std::string>());
  QTextCodec::codecForName("koi8-r");  // checks the recording
  EXPECT_EQ(requested(), std::vector<std::string>{"koi8-r"});
}

}  // namespace
