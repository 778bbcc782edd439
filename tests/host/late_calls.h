#pragma once

#include <ztCAD/ztCAD.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "heap.h"

/// What a destructor of a host may still call when the library has been taken down.
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

/// Calls after the library's unload step, which find the registries empty and fill them anew; on Windows nothing is
/// released when the process ends, so they find everything as it was. A call that does not do what it should ends the
/// process with a failure.
class LateCalls {
 public:
  /// Fills the registries. Their release is known by the memory that it gives back.
  void prepare(const LateFunctions& functions) {
    m_f = functions;
    const double at = 1;
    bool nameIsFree = false;
    const ztCAD_Coord* const center = m_f.crtCoord(&at, &at, &at);
    for (int i = 0; i < 20000; ++i)
      m_f.crtPoint("made in time", center, nameIsFree);
    const LeakIsMeant whatADocumentOwnsIsLost;
    m_document = m_f.crtGMDDocument("never deleted in time");
    m_f.addPointToDoc(m_f.crtPoint("of the document", center, nameIsFree), m_document);
    m_heap = heapInUse();
  }

  bool isPrepared() const { return m_document != nullptr; }

  void run() const {
    constexpr std::size_t enoughToTell = 1000000;
    const bool released = heapInUse() + enoughToTell < m_heap;
#if defined(_WIN32)
    require(!released, "at the end of the process nothing is released");
#else
    require(released, "the unload step has been");
#endif
    m_f.DeleteGMDDoc(m_document);
    m_f.DeleteGMDDoc(nullptr);
    m_f.ClearGMDDoc();
    require(!m_f.ztCAD_getPoints(nullptr), "no document, no points");
    require(!m_f.checkGMDDocument(nullptr), "no document passes no check");
    makeAnew();
    std::fputs("late calls done\n", stderr);
  }

 private:
  void makeAnew() const {
    const double at = 2.5;
    double x = 0;
    double y = 0;
    double z = 0;
    bool nameIsFree = false;
    const ztCAD_Point* const point = m_f.crtPoint("made late", m_f.crtCoord(&at, &at, &at), nameIsFree);
    require(point && nameIsFree, "a point can be made");
    m_f.getPointCoord(point, x, y, z);
    require(x == at && y == at && z == at, "it has its coordinates");
    ztCAD_GMDDocument* const document = m_f.crtGMDDocument("made late");
    require(!m_f.addPointToDoc(point, document), "it can be added");
    require(m_f.ztCAD_getPoints(document)->size() == 1, "it is in the document");
    m_f.DeleteGMDDoc(document);
    m_f.DeleteGMDDoc(document);
  }

  static void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "late calls: not so: %s\n", what);
    std::_Exit(EXIT_FAILURE);
  }

  LateFunctions m_f{};
  ztCAD_GMDDocument* m_document = nullptr;
  std::size_t m_heap = 0;
};
