# What `cmake --install` puts where. Components: `program` (the program and its man page), `development` (what it takes
# to build against the library) and, when the library is a shared one, `runtime` (the library itself).
include(CMakePackageConfigHelpers)

set(corvane_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/corvane)

# ---- library -----------------------------------------------------------------------------------------------------

install(TARGETS corvane EXPORT corvaneTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(FILES
    ${PROJECT_SOURCE_DIR}/include/corvane/Corvane.h
    ${PROJECT_BINARY_DIR}/include/corvane/Version.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvane COMPONENT development)

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

# The prefix is told from where the file lies, so that a tree may be moved; a directory given as an absolute one stays
# where it is, and with the library's the file itself is no longer below the prefix.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
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
configure_file(${PROJECT_SOURCE_DIR}/cmake/corvane.pc.in ${PROJECT_BINARY_DIR}/cmake/corvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/corvane.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# ---- program and man page ----------------------------------------------------------------------------------------

if(TARGET corvane_program)
    get_target_property(corvane_library_type corvane TYPE)
    if(corvane_library_type STREQUAL "SHARED_LIBRARY" AND NOT DEFINED CMAKE_INSTALL_RPATH AND
            NOT CMAKE_INSTALL_FULL_LIBDIR IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
        # Where the loader does not look by itself the program says where its library is, seen from its own place.
        if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
            set(corvane_rpath "${CMAKE_INSTALL_LIBDIR}")
        else()
            file(RELATIVE_PATH corvane_rpath "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
            set(corvane_rpath "$ORIGIN/${corvane_rpath}")
        endif()
        set_target_properties(corvane_program PROPERTIES INSTALL_RPATH "${corvane_rpath}")
    endif()
    install(TARGETS corvane_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES ${PROJECT_SOURCE_DIR}/doc/corvane.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
endif()

# ---- packages ----------------------------------------------------------------------------------------------------

if(CORVANE_TOP_LEVEL)
    include(${CMAKE_CURRENT_LIST_DIR}/Packaging.cmake)
endif()
