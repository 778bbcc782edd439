#include "format.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include "../failure.h"
#include "../info/problem.h"
#include "../input_file.h"
#include "../loaded_document.h"
#include "../output.h"
#include "../platform/file_names.h"

namespace cli {

namespace {

/// Hands the saved form of a document to a function, which returns whether to go on.
template <typename Write>
bool save(ztCAD_GMDDocument* document, ztCAD_Outcome& outcome, Write write) {
  const auto call = [](const char* bytes, std::int64_t size, void* context) {
    return (*static_cast<Write*>(context))(std::string_view(bytes, static_cast<std::size_t>(size)));
  };
  return ztCAD_saveDocumentTo(document, call, &write, &outcome);
}

/// Compares a file with the bytes that a save produces, piece by piece.
class Comparison {
 public:
  explicit Comparison(const std::string& file) : m_file(pathOf(file), std::ios::binary) {}

  /// False at the first difference.
  bool compare(std::string_view bytes) {
    std::array<char, 65536> buffer{};
    while (m_isEqual && !bytes.empty()) {
      const std::size_t size = std::min(bytes.size(), buffer.size());
      m_file.read(buffer.data(), static_cast<std::streamsize>(size));
      m_isEqual = m_file && std::equal(buffer.data(), buffer.data() + size, bytes.data());
      bytes.remove_prefix(size);
    }
    return m_isEqual;
  }

  bool hasDifference() const { return !m_isEqual; }
  bool isEqual() { return m_isEqual && m_file && m_file.peek() == std::ifstream::traits_type::eof(); }

 private:
  std::ifstream m_file;
  bool m_isEqual = true;
};

class Formatting {
 public:
  explicit Formatting(const FormatOptions& options) : m_options(options), m_input(options.file) {}

  ExitCode run() {
    ztCAD_Outcome outcome;
    m_document.reset(ztCAD_loadDocument(m_input.path().c_str(), &outcome));
    if (!m_document) throw Failure(m_options.file + ": " + problemOf(outcome));
    m_isWell = outcome.code == ztCAD_ResultLoaded && !outcome.fault;
    if (m_options.check) return check();
    return m_options.inPlace ? replace() : write();
  }

 private:
  bool isFormatted() {
    Comparison comparison(m_input.path());
    ztCAD_Outcome outcome;
    const bool isSaved =
        save(m_document.get(), outcome, [&](std::string_view bytes) { return comparison.compare(bytes); });
    if (isSaved) return comparison.isEqual();
    if (comparison.hasDifference()) return false;
    throw Failure(m_options.file + ": " + problemOf(outcome));
  }

  ExitCode check() {
    if (isFormatted()) return wellness();
    Output output;
    output << onOneLine(m_options.file) << ": would change\n";
    output.flush();
    return ExitCode::NotWell;
  }

  /// A save keeps only what was read. Where that is not all, the file stays.
  ExitCode replace() {
    if (!m_isWell) {
      printError(m_options.file + ": not changed, because it has errors; 'ztcad check' lists them");
      return ExitCode::NotWell;
    }
    if (!isFormatted()) saveTo(m_options.file);
    return ExitCode::Good;
  }

  ExitCode write() {
    if (!m_options.output.empty() && m_options.output != standardStream)
      saveTo(m_options.output);
    else
      print();
    return wellness();
  }

  void saveTo(const std::string& file) {
    ztCAD_Outcome outcome;
    if (!ztCAD_saveDocument(m_document.get(), file.c_str(), &outcome))
      throw Failure(file + ": " + problemOf(outcome));
  }

  void print() {
    Output output;
    std::string problem;
    ztCAD_Outcome outcome;
    const bool isSaved = save(m_document.get(), outcome, [&](std::string_view bytes) {
      try {
        output.write(bytes);
      } catch (const Failure& writing) {
        problem = writing.what();
      }
      return problem.empty();
    });
    if (!problem.empty()) throw Failure(problem);
    if (!isSaved) throw Failure(m_options.file + ": " + problemOf(outcome));
    output.flush();
  }

  ExitCode wellness() const {
    if (m_isWell) return ExitCode::Good;
    printError(m_options.file + ": the document has errors; 'ztcad check' lists them");
    return ExitCode::NotWell;
  }

  const FormatOptions& m_options;
  const InputFile m_input;
  LoadedDocument m_document;
  bool m_isWell = false;
};

}  // namespace

ExitCode format(const FormatOptions& options) {
  if (options.inPlace && options.file == standardStream)
    throw UsageError("--in-place needs a file, not standard input");
  return Formatting(options).run();
}

}  // namespace cli
