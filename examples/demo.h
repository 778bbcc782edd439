#pragma once

#include <ztCAD/ztCAD.h>

#include <filesystem>
#include <iostream>
#include <string>

/// What the steps of the main job share.
namespace demo {

/// A document that ends with its scope.
class Document {
 public:
  explicit Document(ztCAD_GMDDocument* document) : m_document(document) {}
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { DeleteGMDDoc(m_document); }
  operator ztCAD_GMDDocument*() const { return m_document; }

 private:
  ztCAD_GMDDocument* const m_document;
};

/// A folder for the files of this run, removed with everything in it at the end.
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

/// Says whether a step gave what it must, and remembers a step that did not.
class Account {
 public:
  void step(const std::string& title) { std::cout << "\n== " << title << "\n\n"; }
  void expect(bool asItMustBe, const std::string& what) {
    std::cout << (asItMustBe ? "   ok      " : "   FAILED  ") << what << "\n";
    m_allWell = m_allWell && asItMustBe;
  }
  bool allWell() const { return m_allWell; }

 private:
  bool m_allWell = true;
};

struct Position {
  double x, y, z;
};

inline ztCAD_Coord* coord(const Position& at) { return crtCoord(&at.x, &at.y, &at.z); }

/// Everything in the file.
std::string bytesOf(const std::filesystem::path& file);
/// The document's text for people.
std::string textForm(const ztCAD_GMDDocument* document);
/// Text on the terminal, a margin before each line.
void print(const std::string& text);
/// A windows-1251 file on the terminal.
void printFile(const std::filesystem::path& file);

// the steps; each leaves its files in the folder
void pendulum(const std::filesystem::path& folder, Account& account);
void duplicateNames(const std::filesystem::path& folder, Account& account);
void brokenFiles(const std::filesystem::path& folder, Account& account);
void mechanism(const std::filesystem::path& folder, Account& account);

}  // namespace demo
