#pragma once

#include <string>

class LoadedLibrary;
class ztCAD_GMDDocument;

/// Results of a workload, copied out of the library.
struct PlainResults {
  std::string version;
  std::string correctedName;
  std::string debugText;
  std::string xml;
  std::string savedBytes;
  double farthest = 0;

  bool operator==(const PlainResults& other) const;
};

constexpr int pointsPerRun = 300;

/// Builds a document of points, saves, loads, checks and prints it through exported functions only, and
/// deletes it. A failed expectation fails the calling test.
PlainResults runWorkload(const LoadedLibrary& library);

/// A document with `pointsPerRun` points. The caller may delete it.
ztCAD_GMDDocument* makeDocument(const LoadedLibrary& library);
