#pragma once

#include <ztCAD/ztCAD.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "heap.h"

/// The functions that a destructor of a host may call after the library's unload step.
struct LateFunctions {
  decltype(::addPointToDoc)* addPointToDoc;
  decltype(::checkGMDDocument)* checkGMDDocument;
  decltype(::ClearGMDDoc)* ClearGMDDoc;
  decltype(::crtCoord)* crtCoord;
  decltype(::crtGMDDocument)* crtGMDDocument;
  decltype(::crtPoint)* crtPoint;
  decltype(::DeleteGMDDoc)* DeleteGMDDoc;
  decltype(::getPointCoord)* getPointCoord;
  decltype(::ztCAD_getPoints)* ztCAD_getPoints;
};

/// Calls after the library's unload step, which find the registries empty and fill them again. On Windows
/// nothing is released when the process ends, so the calls find the registries unchanged. A failed
/// expectation ends the process with a failure.
class LateCalls {
 public:
  /// Fills the registries. run() detects their release by the memory that it frees.
  void prepare(const LateFunctions& functions) {
    m_f = functions;
    const double at = 1;
    bool nameIsFree = false;
    const ztCAD_Coord* const center = m_f.crtCoord(&at, &at, &at);
    for (int i = 0; i < 20000; ++i)
      m_f.crtPoint("created before unloading", center, nameIsFree);
    const IntendedLeak ownedMemory;
    m_document = m_f.crtGMDDocument("not deleted before unloading");
    m_f.addPointToDoc(m_f.crtPoint("of the document", center, nameIsFree), m_document);
    m_heap = heapInUse();
  }

  bool isPrepared() const { return m_document != nullptr; }

  void run() const {
    constexpr std::size_t significant = 1000000;
    const bool released = heapInUse() + significant < m_heap;
#if defined(_WIN32)
    require(!released, "nothing is released when the process ends");
#else
    require(released, "the unload step has run");
#endif
    m_f.DeleteGMDDoc(m_document);
    m_f.DeleteGMDDoc(nullptr);
    m_f.ClearGMDDoc();
    require(!m_f.ztCAD_getPoints(nullptr), "a null document has no points");
    require(!m_f.checkGMDDocument(nullptr), "a null document does not pass the check");
    createObjects();
    std::fputs("late calls done\n", stderr);
  }

 private:
  void createObjects() const {
    const double at = 2.5;
    double x = 0;
    double y = 0;
    double z = 0;
    bool nameIsFree = false;
    const ztCAD_Point* const point = m_f.crtPoint("created late", m_f.crtCoord(&at, &at, &at), nameIsFree);
    require(point && nameIsFree, "a point can be created");
    m_f.getPointCoord(point, x, y, z);
    require(x == at && y == at && z == at, "the point has its coordinates");
    ztCAD_GMDDocument* const document = m_f.crtGMDDocument("created late");
    require(!m_f.addPointToDoc(point, document), "the point can be added");
    require(m_f.ztCAD_getPoints(document)->size() == 1, "the point is in the document");
    m_f.DeleteGMDDoc(document);
    m_f.DeleteGMDDoc(document);
  }

  static void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "late calls: failed: %s\n", what);
    std::_Exit(EXIT_FAILURE);
  }

  LateFunctions m_f{};
  ztCAD_GMDDocument* m_document = nullptr;
  std::size_t m_heap = 0;
};
