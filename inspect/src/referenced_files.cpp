#include "referenced_files.h"

#include <algorithm>
#include <system_error>

namespace ztcad::inspect {

namespace fs = std::filesystem;

namespace {

/// Names are UTF-8 on Windows, and bytes elsewhere.
fs::path pathFrom(const std::string& name) {
#if defined(_WIN32)
  return fs::u8path(name);
#else
  return name;
#endif
}

std::string textFrom(const fs::path& path) {
#if defined(_WIN32)
  return path.u8string();
#else
  return path.string();
#endif
}

/// Whether `path` is below `folder`; both are absolute and without "." and "..".
bool isInside(const fs::path& path, const fs::path& folder) {
  auto step = path.begin();
  for (const fs::path& expected : folder) {
    if (expected.empty()) continue;  // a separator at the end
    if (step == path.end() || *step != expected) return false;
    ++step;
  }
  return step != path.end();
}

fs::path canonicalFolder(const std::string& folder) {
  std::error_code error;
  fs::path path = fs::canonical(folder.empty() ? fs::path(".") : pathFrom(folder), error);
  return error ? fs::path() : path;
}

ReferencedFiles::Found refused(Rule rule, const char* problem) {
  ReferencedFiles::Found found;
  found.rule = rule;
  found.problem = problem;
  return found;
}

}  // namespace

ReferencedFiles::ReferencedFiles(const char* folder, const Settings& settings)
    : m_settings(settings),
      m_folder(canonicalFolder(folder ? folder : "")),
      m_allowed(settings.allowedFolder ? canonicalFolder(*settings.allowedFolder) : m_folder) {}

ReferencedFiles::Found ReferencedFiles::find(std::int32_t from, const std::string& name) {
  if (m_settings.values.readFiles == 0) return refused(Rule::file_not_allowed, "no files may be read");
  const fs::path given = pathFrom(name);
  if (given.is_absolute() || given.has_root_name() || given.has_root_directory())
    return refused(Rule::file_not_allowed, "its name is absolute");
  const fs::path& folder = from == 0 ? m_folder : m_files[static_cast<std::size_t>(from) - 1].folder;
  if (folder.empty()) return refused(Rule::file_missing, "");
  if (m_allowed.empty()) return refused(Rule::file_not_allowed, "the allowed folder does not exist");
  // by its name first: nothing outside is even asked whether it exists
  const fs::path named = (folder / given).lexically_normal();
  if (!isInside(named, m_allowed)) return refused(Rule::file_not_allowed, "it is outside the allowed folder");
  std::error_code error;
  const fs::path path = fs::canonical(named, error);
  if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
    return refused(Rule::file_missing, "");
  if (error == std::errc::too_many_symbolic_link_levels)
    return refused(Rule::file_unreadable, "its symbolic links lead nowhere");
  if (error) return refused(Rule::file_unreadable, "the system denies access");
  if (!isInside(path, m_allowed))
    return refused(Rule::file_not_allowed, "a symbolic link leads out of the allowed folder");

  const std::string key = textFrom(path);
  const auto known = m_found.find(key);
  if (known != m_found.end()) {
    Found found = known->second;
    found.isNew = false;
    return found;
  }
  Found found = load(path);
  m_found.emplace(key, found);
  return found;
}

ReferencedFiles::Found ReferencedFiles::load(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return refused(Rule::file_unreadable, "it is no regular file");
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return refused(Rule::file_unreadable, "its size is unknown");
  const auto most = static_cast<std::uintmax_t>(m_settings.values.greatestFileSize - m_bytes);
  if (size > most)
    return refused(Rule::file_too_large, "the referenced files have more bytes than the limit");
  if (count() >= m_settings.values.greatestFileCount)
    return refused(Rule::file_too_large, "there are more referenced files than the limit");

  ztCAD_Outcome outcome = {};
  std::unique_ptr<ztCAD_GMDDocument, End> document(ztCAD_loadDocument(textFrom(path).c_str(), &outcome));
  if (!document) {
    std::string problem = outcome.message;
    while (!problem.empty() && (problem.back() == '.' || problem.back() == ' '))
      problem.pop_back();
    return refused(Rule::file_unreadable, problem.empty() ? "it is no document" : problem.c_str());
  }
  m_bytes += static_cast<std::int64_t>(size);
  File file;
  file.folder = path.parent_path();
  file.name = textFrom(path.lexically_relative(m_folder));
#if defined(_WIN32)
  std::replace(file.name.begin(), file.name.end(), '\\', '/');
#endif
  file.document = std::move(document);
  m_files.push_back(std::move(file));
  Found found;
  found.file = count();
  found.isNew = true;
  return found;
}

}  // namespace ztcad::inspect
