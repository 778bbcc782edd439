#include "baseline_run.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

#include "library_run.h"
#include "mixed_document.h"
#include "mixed_reference.h"
#include "qt_baseline.h"
#include "reference_implementation.h"

namespace benchmarks {

namespace {

/// Loads into a `Content` that outlives the measurement.
template <typename Content, typename Load>
Measurement timedLoad(const Document& document, Load load) {
  Content content;
  return timed([&] { return load(document, content); });
}

/// Counts what was loaded after the measurement.
Measurement loadMixedWithReference(const Document& document) {
  MixedDocument content;
  Measurement measurement = timed([&] { return referenceLoad(document, content); });
  const ContentSize size = sizeOf(content);
  if (size.elements != document.size || size.numbers != document.numbers) measurement.succeeded = false;
  return measurement;
}

template <typename Content, typename Save>
Measurement timedSave(const Document& document, Save save) {
  Content content;
  if (!referenceLoad(document, content)) throw std::runtime_error(document.file + " cannot be loaded");
  return timed([&] { return save(content); });
}

}  // namespace

Measurement loadWithReference(const Document& document) {
  const auto load = [](const Document& d, auto& content) { return referenceLoad(d, content); };
  if (document.shape == Shape::Mixed) return loadMixedWithReference(document);
  if (document.shape == Shape::Mesh) return timedLoad<Mesh>(document, load);
  if (document.shape == Shape::References) return timedLoad<ReferencedPoints>(document, load);
  return timedLoad<std::list<PointRecord>>(document, load);
}

Measurement loadWithQt(const Document& document) {
  if (document.shape == Shape::Mesh)
    return timedLoad<Mesh>(document, [](const Document& d, Mesh& mesh) { return qtLoad(d, mesh); });
  return timedLoad<std::list<QtPoint>>(
      document, [](const Document& d, std::list<QtPoint>& points) { return qtLoad(d, points); });
}

Measurement saveWithReference(const Document& document, const std::string& file) {
  const auto save = [&](const auto& content) { return referenceSave(content, file); };
  if (document.shape == Shape::Mixed) return timedSave<MixedDocument>(document, save);
  if (document.shape == Shape::Mesh) return timedSave<Mesh>(document, save);
  if (document.shape == Shape::References) return timedSave<ReferencedPoints>(document, save);
  std::list<PointRecord> list;
  if (!referenceLoad(document, list)) return {};
  const std::vector<PointRecord> points(list.begin(), list.end());
  return timed([&] { return referenceSave(points, document.shape, file); });
}

Measurement saveWithQt(const Document& document, const std::string& file) {
  if (document.shape == Shape::Mesh)
    return timedSave<Mesh>(document, [&](const Mesh& mesh) { return qtSave(mesh, file); });
  std::list<QtPoint> points;
  if (!qtLoad(document, points)) return {};
  return timed([&] { return qtSave(points, document.shape, file); });
}

Measurement compareSaves(const Document& document, const std::string& file, const std::string& otherFile) {
  Measurement comparison;
  comparison.succeeded = librarySave(document, file).succeeded &&
                         saveWithReference(document, otherFile).succeeded &&
                         textOf(file) == textOf(otherFile);
  std::filesystem::remove(file);
  std::filesystem::remove(otherFile);
  return comparison;
}

}  // namespace benchmarks
