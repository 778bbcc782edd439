#pragma once

#include <list>
#include <QString>
#include <string>
#include <vector>

#include "documents.h"

namespace benchmarks {

/// The obvious implementation with Qt's own calls: a DOM tree of the whole file, QString::split, toDouble,
/// arg.

struct QtPoint {
  QString name;
  QString comment;
  QString inform;
  QString color;
  double x = 0;
  double y = 0;
  double z = 0;
};

/// Both return whether the whole document was read.
bool qtLoad(const Document& document, Mesh& mesh);
bool qtLoad(const Document& document, std::list<QtPoint>& points);

/// Both wait for the disk, as the library does. True if everything was written.
bool qtSave(const Mesh& mesh, const std::string& file);
bool qtSave(const std::list<QtPoint>& points, Shape shape, const std::string& file);

}  // namespace benchmarks
