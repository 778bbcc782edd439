#pragma once

#include <string>

class LoadedLibrary;
class ztCAD_GMDDocument;

/// What a round of work leaves with the host: copies of its own.
struct PlainResults {
  std::string version;
  std::string correctedName;
  std::string forPeople;
  std::string xml;
  std::string savedBytes;
  double farthest = 0;

  bool operator==(const PlainResults& other) const;
};

constexpr int pointsOfARound = 300;

/// Builds a document of points, saves, loads, checks and tells it, through the exported functions alone, and deletes
/// what it made. Whatever does not come out as it should is a failure of the test that called.
PlainResults workARound(const LoadedLibrary& library);

/// A document with some points, which the caller deletes or not.
ztCAD_GMDDocument* makeDocument(const LoadedLibrary& library);
