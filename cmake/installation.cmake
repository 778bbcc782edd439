# What `cmake --install` copies: the component Runtime for programs that were built with the library,
# Development for building such programs. No file of these has the same name with Qt 5 and with Qt 6.

include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${ZTCAD_PACKAGE})

install(TARGETS ztCAD ztCAD_C EXPORT ztCADTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
# The second library: the component InspectRuntime for programs that were built with it.
if(TARGET ztCADInspect)
  install(TARGETS ztCADInspect EXPORT ztCADTargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT InspectRuntime NAMELINK_COMPONENT Development
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT InspectRuntime
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES inspect/include/ztCAD/inspect.h DESTINATION ${ZTCAD_INCLUDEDIR}/ztCAD)
endif()
get_property(public_headers GLOBAL PROPERTY ZTCAD_PUBLIC_HEADERS)
foreach(header IN LISTS public_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${ZTCAD_INCLUDEDIR}/ztCAD/${folder})
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/include/ztCAD/version.h DESTINATION ${ZTCAD_INCLUDEDIR}/ztCAD)

# The CMake package.
install(EXPORT ztCADTargets NAMESPACE ztCAD:: FILE ${ZTCAD_PACKAGE}Targets.cmake DESTINATION ${package_dir})
set(config ${PROJECT_BINARY_DIR}/${ZTCAD_PACKAGE}Config.cmake)
set(config_version ${PROJECT_BINARY_DIR}/${ZTCAD_PACKAGE}ConfigVersion.cmake)
configure_package_config_file(cmake/ztCADConfig.cmake.in ${config} INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${config_version} COMPATIBILITY SameMajorVersion)
install(FILES ${config} ${config_version} DESTINATION ${package_dir})

# The pkg-config files.
file(RELATIVE_PATH pc_to_prefix /p/${CMAKE_INSTALL_LIBDIR}/pkgconfig /p)
function(ztcad_pkg_config file pc_name pc_requires pc_options pc_libraries)
  configure_file(cmake/ztCAD.pc.in ${PROJECT_BINARY_DIR}/${file} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
# Qt's headers refuse code that is not position independent; Qt's own .pc files do not say so
if(WIN32)
  set(pc_pic_option "")
else()
  set(pc_pic_option -fPIC)
endif()
ztcad_pkg_config(${ZTCAD_PACKAGE}.pc ${ZTCAD_PACKAGE} "Qt${ZTCAD_QT}Core Qt${ZTCAD_QT}Xml"
                 "${pc_pic_option}" -lztCAD${ZTCAD_QT_SUFFIX})
ztcad_pkg_config(ztCAD_c${ZTCAD_QT_SUFFIX}.pc "${ZTCAD_PACKAGE} for C" "" "" -lztCAD${ZTCAD_QT_SUFFIX})
if(TARGET ztCADInspect)
  ztcad_pkg_config(ztCAD_inspect${ZTCAD_QT_SUFFIX}.pc ztCADInspect${ZTCAD_QT_SUFFIX}
                   ztCAD_c${ZTCAD_QT_SUFFIX} "" -lztCADInspect${ZTCAD_QT_SUFFIX})
endif()

# The guide, the schemas and the examples, in the folders that the pages' links expect.
file(GLOB pages CONFIGURE_DEPENDS docs/*.md docs/*.png docs/*.svg docs/*.xsd)
file(GLOB examples CONFIGURE_DEPENDS examples/*.cpp examples/*.h examples/*.c)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY docs/rules DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(FILES ${examples} DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
# and the schemas where programs look for them
install(FILES docs/ztCAD-gmd.xsd docs/ztCAD-gmd-strict.xsd
        DESTINATION ${CMAKE_INSTALL_DATADIR}/${ZTCAD_PACKAGE})
