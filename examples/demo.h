#pragma once

#include <ztCAD/ztCAD.h>

#include <filesystem>
#include <iostream>
#include <string>

/// Helpers shared by the steps of the demo.
namespace demo {

/// Owns a document, which may be null, and ends it at the end of the scope.
class Document {
 public:
  explicit Document(ztCAD_GMDDocument* document) : m_document(document) {}
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { ztCAD_endDocument(m_document); }
  operator ztCAD_GMDDocument*() const { return m_document; }

 private:
  ztCAD_GMDDocument* const m_document;
};

/// A temporary folder, removed with its files at the end of the scope.
class ScratchFolder {
 public:
  ScratchFolder() {
    int number = 0;
    do {
      m_path = std::filesystem::temp_directory_path() / ("ztcad-demo-" + std::to_string(number++));
    } while (!std::filesystem::create_directory(m_path));
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

/// Prints the result of each check and records whether any failed.
class Checklist {
 public:
  void step(const std::string& title) { std::cout << "\n== " << title << "\n\n"; }
  void expect(bool passed, const std::string& what) {
    std::cout << (passed ? "   ok      " : "   FAILED  ") << what << "\n";
    m_allPassed = m_allPassed && passed;
  }
  bool allPassed() const { return m_allPassed; }

 private:
  bool m_allPassed = true;
};

struct Position {
  double x, y, z;
};

/// A coordinate owned by the library, as most creation functions take it.
inline ztCAD_Coord* coord(const Position& at) { return crtCoord(&at.x, &at.y, &at.z); }

/// Saves the document; prints the reason if that fails. Returns whether it was saved.
bool save(ztCAD_GMDDocument* document, const std::filesystem::path& file);
/// The content of a file.
std::string bytesOf(const std::filesystem::path& file);
/// The document in its human-readable text form.
std::string textForm(const ztCAD_GMDDocument* document);
/// Prints text with a margin before each line.
void print(const std::string& text);
/// Prints a file that is encoded in windows-1251.
void printFile(const std::filesystem::path& file);

// The steps of the demo; each saves its files in the folder.
void pendulum(const std::filesystem::path& folder, Checklist& checklist);
void duplicateNames(const std::filesystem::path& folder, Checklist& checklist);
void brokenFiles(const std::filesystem::path& folder, Checklist& checklist);
void mechanism(const std::filesystem::path& folder, Checklist& checklist);

/// Reports on a document of the user: how it loads, what it holds at every level, and which references find
/// their template. Returns whether the file loads with result code 0.
bool report(const std::string& file);

}  // namespace demo
