#include "documents.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

#include "../input_file.h"
#include "../platform/file_names.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

/// "./a.xml" and "a.xml" name the same file; reports have the shorter form. "./-" is no standard stream.
std::string withoutDot(const std::string& name) {
  const std::size_t start = name.compare(0, 2, "./") == 0 ? name.find_first_not_of('/', 1) : 0;
  if (start == std::string::npos || name.substr(start) == standardStream) return name;
  return name.substr(start);
}

bool isDocumentName(const fs::path& path) {
  std::string extension = path.extension().u8string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return extension == ".xml";
}

/// What one folder, with all folders in it, holds.
class Folder {
 public:
  explicit Folder(const fs::path& path) {
    search(path);
    std::sort(m_documents.begin(), m_documents.end(),
              [](const DocumentName& a, const DocumentName& b) { return a.name < b.name; });
    if (m_documents.empty()) m_documents.push_back({nameOf(path), "the folder has no documents (*.xml)"});
  }

  std::vector<DocumentName> take() { return std::move(m_documents); }

 private:
  void search(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entries(folder, error); !error && entries != fs::directory_iterator();
         entries.increment(error)) {
      std::error_code ignored;  // an entry that disappears meanwhile is a file that is missing
      if (entries->symlink_status(ignored).type() == fs::file_type::directory)
        search(entries->path());
      else if (isDocumentName(entries->path()) && !entries->is_directory(ignored))
        m_documents.push_back({withoutDot(nameOf(entries->path())), ""});
    }
    if (error) m_documents.push_back({withoutDot(nameOf(folder)), error.message()});
  }

  std::vector<DocumentName> m_documents;
};

}  // namespace

std::vector<DocumentName> findDocuments(const std::vector<std::string>& paths) {
  std::vector<DocumentName> documents;
  std::unordered_set<std::string> names;
  const auto add = [&](const DocumentName& document) {
    if (names.insert(document.name).second) documents.push_back(document);
  };
  for (const std::string& path : paths) {
    std::error_code ignored;
    if (path != standardStream && fs::is_directory(pathOf(path), ignored))
      for (const DocumentName& document : Folder(pathOf(path)).take())
        add(document);
    else
      add({withoutDot(path), ""});
  }
  return documents;
}

}  // namespace cli
