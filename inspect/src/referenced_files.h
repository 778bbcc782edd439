#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "rule.h"
#include "settings.h"

namespace ztcad::inspect {

/// Loads the files that references name, each once, and no others.
class ReferencedFiles {
 public:
  /// A file that may be read, or why not.
  struct Found {
    std::int32_t file = -1;  // number, from 1
    bool isNew = false;      // asked for the first time
    Rule rule = Rule::file_missing;
    std::string problem;  // for the rules that have one
  };

  ReferencedFiles(const char* folder, const Settings& settings);

  /// Looks up a file by the name that a reference in `from` (0: the document) gives.
  Found find(std::int32_t from, const std::string& name);

  struct End {
    void operator()(ztCAD_GMDDocument* document) const { ztCAD_endDocument(document); }
  };
  ztCAD_GMDDocument* document(std::int32_t file) const {
    return m_files[static_cast<std::size_t>(file) - 1].document.get();
  }
  /// Relative to the folder of the document.
  const std::string& name(std::int32_t file) const {
    return m_files[static_cast<std::size_t>(file) - 1].name;
  }
  std::int32_t count() const { return static_cast<std::int32_t>(m_files.size()); }

 private:
  struct File {
    std::filesystem::path folder;
    std::string name;
    std::unique_ptr<ztCAD_GMDDocument, End> document;
  };

  Found load(const std::filesystem::path& path);

  const Settings& m_settings;
  std::filesystem::path m_folder;   // canonical
  std::filesystem::path m_allowed;  // canonical; empty: no file can be read
  std::int64_t m_bytes = 0;
  std::vector<File> m_files;
  std::unordered_map<std::string, Found> m_found;  // by canonical path
};

}  // namespace ztcad::inspect
