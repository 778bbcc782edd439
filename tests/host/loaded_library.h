#pragma once

#include <ztCAD/ztCAD.h>

#include "exported_address.h"
#include "system_loader.h"

/// The shared library, opened at run time by a host that is not linked with it. Functions are looked up by
/// name; their types are those of the public headers.
class LoadedLibrary {
  void* m_handle = system_loader::open(path());  // declared before the functions, whose initialisers use it

 public:
  LoadedLibrary() = default;
  ~LoadedLibrary() {
    if (m_handle) system_loader::close(m_handle);
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  static const char* path() { return ZTCAD_LIBRARY; }

  /// Whether the system's loader lists the library as loaded.
  static bool isLoaded() { return system_loader::isLoaded(path()); }

  /// Closes the library; no function may be called afterwards.
  void close() {
    void* const handle = m_handle;
    m_handle = nullptr;
    system_loader::close(handle);
  }

  ExportedAddress at(const char* name) const { return ExportedAddress(system_loader::find(m_handle, name)); }

  decltype(::addPointToDoc)& addPointToDoc = at("addPointToDoc");
  decltype(::addTmplPointToDoc)& addTmplPointToDoc = at("addTmplPointToDoc");
  decltype(::addStructureToDoc)& addStructureToDoc = at("addStructureToDoc");
  decltype(::addStructureToStructure)& addStructureToStructure = at("addStructureToStructure");
  decltype(::checkGMDDocument)& checkGMDDocument = at("checkGMDDocument");
  decltype(::ClearGMDDoc)& ClearGMDDoc = at("ClearGMDDoc");
  decltype(::crtCoord)& crtCoord = at("crtCoord");
  decltype(::crtGMDDocument)& crtGMDDocument = at("crtGMDDocument");
  decltype(::crtGMDDocumentFromFile)& crtGMDDocumentFromFile = at("crtGMDDocumentFromFile");
  decltype(::crtGMDDocumentFromStdString)& crtGMDDocumentFromStdString = at("crtGMDDocumentFromStdString");
  decltype(::crtHeader)& crtHeader = at("crtHeader");
  decltype(::crtLCS_nostl)& crtLCS_nostl = at("crtLCS_nostl");
  decltype(::crtPoint)& crtPoint = at("crtPoint");
  decltype(::crtStructure)& crtStructure = at("crtStructure");
  decltype(::crtTmplPoint)& crtTmplPoint = at("crtTmplPoint");
  decltype(::crtTmplStructure)& crtTmplStructure = at("crtTmplStructure");
  decltype(::DeleteGMDDoc)& DeleteGMDDoc = at("DeleteGMDDoc");
  decltype(::doCorrectName)& doCorrectName = at("doCorrectName");
  decltype(::getParallel_Morvik)& getParallel_Morvik = at("getParallel_Morvik");
  decltype(::getPointCoord)& getPointCoord = at("getPointCoord");
  decltype(::GMDDocumentToString)& GMDDocumentToString = at("GMDDocumentToString");
  decltype(::SaveGMDDocument)& SaveGMDDocument = at("SaveGMDDocument");
  decltype(::setHeader)& setHeader = at("setHeader");
  decltype(::ztCAD_getPoints)& ztCAD_getPoints = at("ztCAD_getPoints");
  decltype(::ztCAD_getStructures)& ztCAD_getStructures = at("ztCAD_getStructures");
  decltype(::ztCAD_getTmplPoints)& ztCAD_getTmplPoints = at("ztCAD_getTmplPoints");
  decltype(::ztCADVersion)& ztCADVersion = at("ztCADVersion");
};

/// The library, opened on the first call and kept open until the process ends.
inline const LoadedLibrary& permanentlyLoadedLibrary() {
  static const auto* const library = new LoadedLibrary;
  return *library;
}
