#include "library_way.h"

#include <ztCAD/ztCAD.h>

#include <filesystem>
#include <QFileInfo>
#include <stdexcept>

#include "coordinates.h"

namespace benchmarks {

namespace {

/// The document stays alive: what it holds counts, and a process that ends need not take it apart.
ztCAD_GMDDocument* load(const Document& document, bool& fine) {
  std::int32_t code = -1;
  bool fault = true;
  ztCAD_GMDDocument* const loaded = crtGMDDocumentFromFile(document.file, code, fault);
  fine = code == 0 && !fault;
  return loaded;
}

ztCAD_GMDDocument* loadOrThrow(const Document& document) {
  bool fine = false;
  ztCAD_GMDDocument* const loaded = load(document, fine);
  if (!fine) throw std::runtime_error(document.file + " does not load");
  return loaded;
}

bool holdsAll(ztCAD_GMDDocument* loaded, const Document& document) {
  switch (document.shape) {
    case Shape::Mesh: {
      const auto& solids = *ztCAD_getTriangles(loaded);
      return solids.size() == 1 && solids.front().vertices().coordinates().size() == 3 * document.size &&
             solids.front().faces().indices().size() == 6 * document.size;
    }
    case Shape::Structures:
      return ztCAD_getStructures(loaded)->size() ==
             (document.size + pointsInStructure - 1) / pointsInStructure;
    case Shape::Templates:
      return ztCAD_getTmplPoints(loaded)->size() == document.size;
    default:
      return ztCAD_getPoints(loaded)->size() == document.size;
  }
}

/// Saving reports nothing; what it wrote is looked at by its length.
bool isThere(const std::string& file, double atLeast) {
  const QFileInfo written(QString::fromStdString(file));
  return written.exists() && static_cast<double>(written.size()) >= atLeast;
}

void addPoints(ztCAD_GMDDocument* document, Shape names, std::size_t count) {
  Coordinates coordinates;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = coordinates.next();
    const double y = coordinates.next();
    const double z = coordinates.next();
    bool nameIsFree = false;
    addPointToDoc(crtPoint_nostl(pointName(names, i).c_str(), crtCoord(&x, &y, &z), nameIsFree), document);
  }
}

}  // namespace

Figures libraryLoad(const Document& document) {
  ztCAD_GMDDocument* loaded = nullptr;
  Figures figures = timed([&] {
    bool fine = false;
    loaded = load(document, fine);
    return fine;
  });
  figures.fine = figures.fine && holdsAll(loaded, document);
  return figures;
}

Figures librarySave(const Document& document, const std::string& file) {
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  Figures figures = timed([&] {
    SaveGMDDocument(loaded, file);
    return true;
  });
  figures.fine = isThere(file, document.bytes * 0.9);
  return figures;
}

Figures libraryCheck(const Document& document, const std::function<void()>& prepare) {
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  return bestOf(5, prepare, [&] { return checkGMDDocument(loaded); });
}

Figures libraryDelete(const Document& document, std::size_t records) {
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  const double zero = 0;
  for (std::size_t i = 0; i < records; ++i)
    crtCoord(&zero, &zero, &zero);
  return timed([&] {
    DeleteGMDDoc(loaded);
    return true;
  });
}

Figures libraryUnify(std::size_t points, bool again, const std::string& file) {
  ztCAD_GMDDocument* const document = crtGMDDocument("benchmark");
  addPoints(document, Shape::OneName, points);
  const auto save = [&] {
    SaveGMDDocument(document, file);
    return true;
  };
  Figures figures = timed(save);
  if (again) {
    std::filesystem::remove(file);  // else what it held would be given back within the time
    figures = timed(save);
  }
  figures.fine = isThere(file, static_cast<double>(points) * 60) &&
                 ztCAD_getPoints(document)->back().name().endsWith(QString::number(points - 1));
  return figures;
}

Figures libraryBuildVertices(std::size_t count) {
  ztCAD_Vertices* const vertices = crtVertices();
  Coordinates coordinates;
  return timed([&] {
    for (std::size_t i = 0; i < count; ++i) {
      const double x = coordinates.next();
      const double y = coordinates.next();
      const double z = coordinates.next();
      addVertex(crtVertexByCoord(crtCoord(&x, &y, &z)), vertices);
    }
    return vertices->coordinates().size() == 3 * count;
  });
}

Figures libraryBuildPoints(std::size_t count) {
  ztCAD_GMDDocument* const document = crtGMDDocument("benchmark");
  return timed([&] {
    addPoints(document, Shape::DifferentNames, count);
    return ztCAD_getPoints(document)->size() == count;
  });
}

}  // namespace benchmarks
