# Finds the Qt that everything is built with, and sets
#
#   ZTCAD_QT         its major version, for the targets Qt${ZTCAD_QT}::Core and Qt${ZTCAD_QT}::Xml
#   ZTCAD_OLDEST_QT  the oldest version that can be used
#   ZTCAD_QT_SUFFIX  "-qt6" with Qt 6. The library's classes have another layout with Qt 6, so that build is a
#                    library of its own: the names of the library, of its packages and of the folders that it
#                    is installed into end in the suffix, and both can be installed into one prefix.

if(NOT ZTCAD_QT)
  set(default_qt 6)
  # a project that contains this one, and uses Qt 6, needs the library for Qt 6
  if(TARGET Qt5::Core OR NOT TARGET Qt6::Core)
    find_package(Qt5 5.15 QUIET COMPONENTS Core Xml)
    if(Qt5_FOUND)
      set(default_qt 5)
    endif()
  endif()
  unset(ZTCAD_QT CACHE)
  set(ZTCAD_QT ${default_qt})
endif()
set(ZTCAD_QT ${ZTCAD_QT} CACHE STRING "Major version of Qt: 5 or 6; by default 5 where Qt 5.15 is installed")
set_property(CACHE ZTCAD_QT PROPERTY STRINGS 5 6)

if(ZTCAD_QT STREQUAL "5")
  set(ZTCAD_OLDEST_QT 5.15)
  set(ZTCAD_QT_SUFFIX "")
elseif(ZTCAD_QT STREQUAL "6")
  set(ZTCAD_OLDEST_QT 6.4)
  set(ZTCAD_QT_SUFFIX -qt6)
else()
  message(FATAL_ERROR "ZTCAD_QT is \"${ZTCAD_QT}\"; it must be 5 or 6")
endif()

find_package(Qt${ZTCAD_QT} ${ZTCAD_OLDEST_QT} QUIET COMPONENTS Core Xml)
if(NOT Qt${ZTCAD_QT}_FOUND)
  message(FATAL_ERROR "Qt ${ZTCAD_OLDEST_QT} (QtCore and QtXml) was not found. Install it, or add its folder "
                      "to CMAKE_PREFIX_PATH; -DZTCAD_QT=5 or -DZTCAD_QT=6 selects the Qt to build with.")
endif()
message(STATUS "Qt ${Qt${ZTCAD_QT}_VERSION}")
