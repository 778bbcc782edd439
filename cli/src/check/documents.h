#pragma once

#include <string>
#include <vector>

namespace cli {

/// A document to check, or a folder that has none.
struct DocumentName {
  std::string name;
  std::string problem;  // why there is nothing to check; empty if there is
};

/// The documents that the paths name, in this order, each once. Folders are searched for "*.xml" with all
/// folders in them; their documents are in the order of their names. Symbolic links to folders are not
/// followed there.
std::vector<DocumentName> findDocuments(const std::vector<std::string>& paths);

}  // namespace cli
