# The component Python, where Debian's interpreters look for packages. A virtual environment takes the wheel.

set(packages lib/python3/dist-packages)
install(FILES ${modules} DESTINATION ${packages}/ztcad COMPONENT Python)
install(DIRECTORY ztcad/batch DESTINATION ${packages}/ztcad COMPONENT Python FILES_MATCHING PATTERN *.py)
install(TARGETS ztcad_python LIBRARY DESTINATION ${packages}/ztcad COMPONENT Python)
install(FILES ${PROJECT_BINARY_DIR}/python/METADATA DESTINATION ${packages}/ztcad-${PROJECT_VERSION}.dist-info
        COMPONENT Python)
