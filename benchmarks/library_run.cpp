#include "library_run.h"

#include <ztCAD/ztCAD.h>

#include <filesystem>
#include <QFileInfo>
#include <stdexcept>

#include "coordinates.h"
#include "library_contents.h"

namespace benchmarks {

namespace {

/// The document is never deleted: its memory counts as retained, and a process about to exit need not free
/// it.
ztCAD_GMDDocument* load(const Document& document, bool& succeeded) {
  std::int32_t code = -1;
  bool fault = true;
  ztCAD_GMDDocument* const loaded = crtGMDDocumentFromFile(document.file, code, fault);
  succeeded = code == 0 && !fault;
  return loaded;
}

ztCAD_GMDDocument* loadOrThrow(const Document& document) {
  bool succeeded = false;
  ztCAD_GMDDocument* const loaded = load(document, succeeded);
  if (!succeeded) throw std::runtime_error(document.file + " cannot be loaded");
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
    case Shape::References:
      return ztCAD_getTmplPoints(loaded)->size() == templatesToRefer &&
             ztCAD_getPointsRef(loaded)->size() == document.size;
    case Shape::Mixed: {
      const ContentSize size = sizeOf(loaded);
      return size.elements == document.size && size.numbers == document.numbers;
    }
    default:
      return ztCAD_getPoints(loaded)->size() == document.size;
  }
}

/// SaveGMDDocument reports no outcome, so success is judged by the size of the file.
bool isWritten(const std::string& file, double minimumSize) {
  const QFileInfo written(QString::fromStdString(file));
  return written.exists() && static_cast<double>(written.size()) >= minimumSize;
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

Measurement libraryLoad(const Document& document) {
  ztCAD_GMDDocument* loaded = nullptr;
  Measurement measurement = timed([&] {
    bool succeeded = false;
    loaded = load(document, succeeded);
    return succeeded;
  });
  measurement.succeeded = measurement.succeeded && holdsAll(loaded, document);
  return measurement;
}

Measurement libraryReview(const Document& document) {
  ztCAD_Review* review = nullptr;
  Measurement measurement = timed([&] {
    ztCAD_Outcome outcome;
    review = ztCAD_reviewFile(document.file.c_str(), 1000, &outcome);
    return outcome.code == 0 && !outcome.fault;
  });
  ztCAD_GMDDocument* const loaded = ztCAD_takeReviewedDocument(review);
  measurement.succeeded = measurement.succeeded && holdsAll(loaded, document);
  return measurement;
}

Measurement librarySave(const Document& document, const std::string& file) {
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  Measurement measurement = timed([&] {
    SaveGMDDocument(loaded, file);
    return true;
  });
  // a mixed document need not have the form that the library writes
  measurement.succeeded = isWritten(file, document.bytes * (document.shape == Shape::Mixed ? 0.5 : 0.9));
  return measurement;
}

Measurement libraryCheck(const Document& document, const std::function<void()>& prepare) {
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  return bestOf(5, prepare, [&] { return checkGMDDocument(loaded); });
}

Measurement libraryDelete(const Document& document, std::size_t records) {
  returnFreedMemory();
  ztCAD_GMDDocument* const loaded = loadOrThrow(document);
  const double zero = 0;
  for (std::size_t i = 0; i < records; ++i)
    crtCoord(&zero, &zero, &zero);
  return timed([&] {
    DeleteGMDDoc(loaded);
    return true;
  });
}

Measurement libraryUnify(std::size_t points, SaveOrder order, const std::string& file) {
  ztCAD_GMDDocument* const document = crtGMDDocument("benchmark");
  addPoints(document, Shape::SameName, points);
  const auto save = [&] {
    SaveGMDDocument(document, file);
    return true;
  };
  Measurement measurement = timed(save);
  if (order == SaveOrder::Second) {
    std::filesystem::remove(file);  // freeing the earlier file's blocks must not be timed
    measurement = timed(save);
  }
  measurement.succeeded = isWritten(file, static_cast<double>(points) * 60) &&
                          ztCAD_getPoints(document)->back().name().endsWith(QString::number(points - 1));
  return measurement;
}

Measurement libraryBuildVertices(std::size_t count) {
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

Measurement libraryBuildPoints(std::size_t count) {
  ztCAD_GMDDocument* const document = crtGMDDocument("benchmark");
  return timed([&] {
    addPoints(document, Shape::DifferentNames, count);
    return ztCAD_getPoints(document)->size() == count;
  });
}

}  // namespace benchmarks
