// Loads texts and prints what became of each, so that the answers of two builds of the library can be
// compared. It uses the interface for C, which is the same in every build: one program opens any of them.
//
//   load_report <library> [--mutated <count> [--tens]] <file or folder>...
//
// The texts are those of the well-formedness rows, the files, and `count` mutations of these; with --tens,
// the mutations are reported ten at a time, as a sum. A line consists of
//
// - the name of the text;
// - what loading it as a file gives: code, fault, line, column; the code of saving it; sums of the saved
//   bytes and of both text forms, "-" without a document; the message;
// - after "|", what parsing it as a string gives, of which the part before an error is read: whether it was
//   parsed, line, column, sums of both text forms, the message.

#include <ztCAD/ztCAD_c.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "differential/sample_texts.h"
#include "exported_address.h"
#include "scratch_folder.h"
#include "sum.h"
#include "system_loader.h"

namespace {

/// The library under test, and those of its functions that are used here.
struct Library {
  explicit Library(const char* path) : handle(system_loader::open(path)) {}

  ExportedAddress at(const char* name) const { return ExportedAddress(system_loader::find(handle, name)); }

  void* handle;  // never closed
  decltype(::ztCAD_loadDocument)& load = at("ztCAD_loadDocument");
  decltype(::ztCAD_saveDocument)& save = at("ztCAD_saveDocument");
  decltype(::ztCAD_endDocument)& end = at("ztCAD_endDocument");
  decltype(::crtGMDDocumentFromStdString_nostl)& parse = at("crtGMDDocumentFromStdString_nostl");
  decltype(::DeleteGMDDoc)& remove = at("DeleteGMDDoc");
  decltype(::GMDDocumentToString_nostl)& toText = at("GMDDocumentToString_nostl");
};

/// A message on one line.
std::string quoted(const std::string& message) {
  std::string text = "\"";
  for (const char c : message)
    text += c == '\n' || c == '\r' || c == '\0' ? '?' : c;
  return text + '"';
}

std::string bytesOf(const std::string& fileName) {
  std::ifstream file(std::filesystem::u8path(fileName), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class Report {
 public:
  explicit Report(const Library& library) : m_library(library) {}

  std::string of(const std::string& bytes) const { return loaded(bytes) + " | " + parsed(bytes); }

 private:
  std::string loaded(const std::string& bytes) const {
    std::ofstream(std::filesystem::u8path(m_source), std::ios::binary) << bytes << std::flush;
    ztCAD_Outcome outcome;
    ztCAD_GMDDocument* const document = m_library.load(m_source.c_str(), &outcome);
    std::ostringstream line;
    line << outcome.code << ' ' << outcome.fault << ' ' << outcome.line << ' ' << outcome.column;
    if (document) {
      ztCAD_Outcome saving;
      const bool isSaved = m_library.save(document, m_target.c_str(), &saving);
      line << ' ' << saving.code << ' ' << (isSaved ? sumOf(bytesOf(m_target)) : "-") << texts(document);
      m_library.end(document);
    } else {
      line << " - - - -";
    }
    line << ' ' << quoted(outcome.message);
    return line.str();
  }

  std::string parsed(const std::string& bytes) const {
    bool isParsed = false;
    char message[256] = "";
    int line = 0;
    int column = 0;
    ztCAD_GMDDocument* const document =
        m_library.parse(bytes.c_str(), isParsed, message, sizeof message, line, column);
    std::ostringstream result;
    result << isParsed << ' ' << line << ' ' << column << texts(document) << ' ' << quoted(message);
    m_library.remove(document);
    return result.str();
  }

  std::string texts(const ztCAD_GMDDocument* document) const {
    return ' ' + sumOf(text(document, false)) + ' ' + sumOf(text(document, true));
  }

  std::string text(const ztCAD_GMDDocument* document, bool textForm) const {
    const std::int64_t length = m_library.toText(document, textForm, nullptr, 0);
    if (length < 0) return "no text";
    std::string result(static_cast<std::size_t>(length) + 1, '\0');
    m_library.toText(document, textForm, result.data(), length + 1);
    result.pop_back();
    return result;
  }

  const Library& m_library;
  const ScratchFolder m_folder;
  const std::string m_source = m_folder.file("source.xml");
  const std::string m_target = m_folder.file("target.xml");
};

struct Arguments {
  const char* library = nullptr;
  int mutations = 0;
  bool inTens = false;
  sample_texts::Samples samples = sample_texts::wellFormednessRows();
};

void addFiles(const std::filesystem::path& path, sample_texts::Samples& samples) {
  if (std::filesystem::is_directory(path)) return append(samples, sample_texts::filesIn(path));
  samples.push_back({path.filename().string(), bytesOf(path.u8string())});
}

Arguments readArguments(int count, char** values) {
  Arguments arguments;
  if (count < 2) throw std::runtime_error("usage: load_report <library> [option...] <file or folder>...");
  arguments.library = values[1];
  for (int i = 2; i < count; ++i) {
    const std::string value = values[i];
    if (value == "--mutated" && i + 1 < count) {
      arguments.mutations = std::atoi(values[++i]);
    } else if (value == "--tens") {
      arguments.inTens = true;
    } else {
      addFiles(std::filesystem::u8path(value), arguments.samples);
    }
  }
  return arguments;
}

void printTens(const sample_texts::Samples& samples, const Report& report) {
  constexpr std::size_t ten = 10;
  for (std::size_t first = 0; first < samples.size(); first += ten) {
    Sum sum;
    for (std::size_t i = first; i < std::min(first + ten, samples.size()); ++i)
      sum.add(report.of(samples[i].bytes));
    std::printf("%s... %s\n", samples[first].name.c_str(), sum.text().c_str());
  }
}

void print(const sample_texts::Samples& samples, const Report& report) {
  for (const sample_texts::Sample& sample : samples)
    std::printf("%s %s\n", sample.name.c_str(), report.of(sample.bytes).c_str());
}

}  // namespace

int main(int count, char** values) try {
  const Arguments arguments = readArguments(count, values);
  const Library library(arguments.library);
  const Report report(library);
  print(arguments.samples, report);
  if (arguments.mutations == 0) return 0;
  const auto mutated = sample_texts::mutated(arguments.samples, arguments.mutations);
  if (arguments.inTens) {
    printTens(mutated, report);
  } else {
    print(mutated, report);
  }
  return 0;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "load_report: %s\n", failure.what());
  return 1;
}
