# What `cmake --install` puts where. Components: `program` (the programs, man pages, documents and examples),
# `development` (what is needed to build with the library) and, with a shared library, `runtime` (the library itself).
include(CMakePackageConfigHelpers)

set(corvane_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/corvane)

# ---- library -----------------------------------------------------------------------------------------------------

install(TARGETS corvane EXPORT corvaneTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(FILES ${corvane_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvane COMPONENT development)

# ---- CMake package -----------------------------------------------------------------------------------------------

install(EXPORT corvaneTargets NAMESPACE corvane:: DESTINATION ${corvane_package_dir} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/corvaneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/cmake/corvaneConfig.cmake
    INSTALL_DESTINATION ${corvane_package_dir}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/corvaneConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/cmake/corvaneConfig.cmake
    ${PROJECT_BINARY_DIR}/cmake/corvaneConfigVersion.cmake
    DESTINATION ${corvane_package_dir} COMPONENT development)

# ---- pkg-config file ---------------------------------------------------------------------------------------------

# The file finds its prefix relative to itself, so that a tree installed with `cmake --install --prefix` may be moved.
# Installed where it was configured for, it names the prefix as every other .pc file does, so that pkg-config can leave
# out the system's directories and put a sysroot in front.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")  # then the file itself is not below the prefix
    set(corvane_pc_prefix "${CMAKE_INSTALL_PREFIX}")
    set(corvane_pc_libdir "${CMAKE_INSTALL_LIBDIR}")
else()
    file(RELATIVE_PATH corvane_pc_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
    string(REGEX REPLACE "/$" "" corvane_pc_prefix "\${pcfiledir}/${corvane_pc_prefix}")
    set(corvane_pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    set(corvane_pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
else()
    set(corvane_pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
foreach(directory IN ITEMS prefix libdir includedir)  # pkg-config reads a space with a backslash
    string(REPLACE " " "\\ " corvane_pc_${directory} "${corvane_pc_${directory}}")
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/corvane.pc.in ${PROJECT_BINARY_DIR}/cmake/corvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/corvane.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    install(CODE "
    if(CMAKE_INSTALL_PREFIX STREQUAL [==[${CMAKE_INSTALL_PREFIX}]==])
        include([==[${PROJECT_SOURCE_DIR}/cmake/FixedPrefix.cmake]==])
        corvane_fix_prefix(
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}\" \"\${CMAKE_INSTALL_PREFIX}\")
    endif()" COMPONENT development)
endif()

# ---- documents and examples --------------------------------------------------------------------------------------

# In the folders that they have in the sources, so that the links between them hold.
set(corvane_documents development)
if(CORVANE_PROGRAM)
    set(corvane_documents program)
endif()
set(corvane_docdir ${CMAKE_INSTALL_DATAROOTDIR}/doc/corvane)
if(CORVANE_TOP_LEVEL)
    set(corvane_docdir ${CMAKE_INSTALL_DOCDIR})  # named after a project around this one, if there is one
endif()
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${corvane_docdir} COMPONENT ${corvane_documents})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/doc DESTINATION ${corvane_docdir} COMPONENT ${corvane_documents}
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.png")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${corvane_docdir}
    COMPONENT ${corvane_documents}
    REGEX "/(archive-.*\\.sh|read_table\\..*)$" PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# ---- packages ----------------------------------------------------------------------------------------------------

if(CORVANE_PYTHON)
    include(${CMAKE_CURRENT_LIST_DIR}/Python.cmake)
endif()
if(CORVANE_TOP_LEVEL)
    include(${CMAKE_CURRENT_LIST_DIR}/Packaging.cmake)
endif()
