// Which of Qt's codecs the library asks for, seen by a program that defines Qt's ways to a codec itself and hands on.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <QByteArray>
#include <QTextCodec>
#include <string>
#include <vector>

#include "loaded_library.h"

namespace {

/// Names of the codecs that were asked for.
std::vector<std::string>& askedFor() {
  static std::vector<std::string> names;
  return names;
}

template <typename Function>
Function* qtsOwn(const char* name) {
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
      qtsOwn<QTextCodec*(const QByteArray&)>("_ZN10QTextCodec12codecForNameERK10QByteArray");
  askedFor().push_back(name.toStdString());
  return own(name);
}

QTextCodec* QTextCodec::codecForMib(int mib) {
  static auto* const own = qtsOwn<QTextCodec*(int)>("_ZN10QTextCodec11codecForMibEi");
  askedFor().push_back(std::to_string(mib));
  return own(mib);
}

QTextCodec* QTextCodec::codecForLocale() {
  static auto* const own = qtsOwn<QTextCodec*()>("_ZN10QTextCodec14codecForLocaleEv");
  askedFor().emplace_back("that of the locale");
  return own();
}

namespace {

TEST(Codecs, LoadingAsksForNone) {
  const LoadedLibrary library;
  EXPECT_EQ(askedFor(), std::vector<std::string>());
  // the recording works: an encoding that the library does not know itself is asked for
  textOfADocument(library, "koi8-r");
  EXPECT_NE(askedFor(), std::vector<std::string>());
}

}  // namespace
