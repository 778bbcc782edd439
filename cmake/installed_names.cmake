# Names of what is installed. Those of the build with Qt 6 differ, so that both can be in one prefix. Besides
# the variables of GNUInstallDirs this sets
#
#   ZTCAD_PACKAGE        the name for find_package and pkg-config: ztCAD or ztCAD-qt6
#   ZTCAD_INCLUDEDIR     the folder that contains the folder ztCAD of the headers
#   ZTCAD_OTHER_QT       the Qt that the library must not be used with, and
#   ZTCAD_OTHER_PACKAGE  the package for it

include(GNUInstallDirs)
set(ZTCAD_PACKAGE ztCAD${ZTCAD_QT_SUFFIX})
if(ZTCAD_QT EQUAL 5)
  set(ZTCAD_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR})
  set(ZTCAD_OTHER_QT 6)
  set(ZTCAD_OTHER_PACKAGE ztCAD-qt6)
else()
  set(ZTCAD_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/${ZTCAD_PACKAGE})
  set(ZTCAD_OTHER_QT 5)
  set(ZTCAD_OTHER_PACKAGE ztCAD)
  if("$CACHE{CMAKE_INSTALL_DOCDIR}" STREQUAL "") # the default
    string(APPEND CMAKE_INSTALL_DOCDIR -qt6)
  endif()
endif()
