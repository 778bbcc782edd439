#pragma once

#include <list>
#include <QString>
#include <string>
#include <vector>

#include "documents.h"

namespace benchmarks {

/// The way that Qt's own calls suggest: a DOM tree of the whole file, QString::split, toDouble, arg.

struct StockPoint {
  QString name;
  QString comment;
  QString inform;
  QString color;
  double x = 0;
  double y = 0;
  double z = 0;
};

/// Both answer whether all of the document was found.
bool stockLoad(const Document& document, Mesh& mesh);
bool stockLoad(const Document& document, std::list<StockPoint>& points);

/// Both wait for the disk, as the library does. True when all is written.
bool stockSave(const Mesh& mesh, const std::string& file);
bool stockSave(const std::list<StockPoint>& points, Shape shape, const std::string& file);

}  // namespace benchmarks
