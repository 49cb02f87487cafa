# The Debian packages that `cpack -G DEB` makes: corvane (the programs, their man pages, documents and examples) and
# libcorvane-dev (headers, library and package files); with a shared library also libcorvaneN, the library itself, where
# N is the number of its soname. A package for a distribution is configured with -DCMAKE_INSTALL_PREFIX=/usr, which
# gives the multiarch library directory, and -DCORVANE_STATIC=OFF, which leaves the C++ runtime to its own package.
# Dependencies are then found with dpkg-shlibdeps and file (Debian: dpkg-dev, file).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "corvane maintainers <maintainers@corvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_STRIP_FILES ON)
set(CPACK_SOURCE_GENERATOR TGZ)
# Left out: what git and builds leave at the top of the sources, wherever they themselves are.
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" corvane_pattern "${PROJECT_SOURCE_DIR}")
set(CPACK_SOURCE_IGNORE_FILES "^${corvane_pattern}/\\.git(/|$)" "^${corvane_pattern}/build(-[^/]*)?(/|$)")
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(corvane_debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# The line that names a package, then the text that describes it; the paragraph that all have in common comes next.
set(corvane_debian_about "Corvane reads the WMO alphanumeric code forms FM 35 TEMP, FM 36 TEMP SHIP,
FM 37 TEMP DROP and FM 38 TEMP MOBIL, from single reports and from raw
bulletins: tables of all levels, whole soundings, indices and skew-T diagrams.")

set(CPACK_COMPONENTS_ALL development)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcorvane-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "decoder for upper-air sounding reports (development files)
${corvane_debian_about}

This package holds the headers, the library to link with, and its CMake and
pkg-config files. The documents and examples are in the package corvane.")

if(CORVANE_PROGRAM)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS corvane)
    list(APPEND CPACK_COMPONENTS_ALL program)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME corvane)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
    if(NOT corvane_fully_static)
        set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
    endif()
    set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "decoder for upper-air sounding reports
${corvane_debian_about}

This package holds the programs corvane (one report), corvane-feed (bulletins)
and corvane-skewt (diagrams and indices), with documents and examples.")
endif()

get_target_property(corvane_library_type corvane TYPE)
if(corvane_library_type STREQUAL "SHARED_LIBRARY")
    list(APPEND CPACK_COMPONENTS_ALL runtime)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libcorvane${PROJECT_VERSION_MAJOR})
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
    set(corvane_debian_library "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${corvane_debian_version})")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${corvane_debian_library}")
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${corvane_debian_library}")
    set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "decoder for upper-air sounding reports (shared library)
${corvane_debian_about}

This package holds the shared library.")
endif()

if(CORVANE_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-corvane)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
        "python3 (>= ${corvane_python_version}), python3 (<< ${corvane_python_next})")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pandas")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-xarray, python3-dask")
    set(CPACK_DEBIAN_PYTHON_DESCRIPTION "decoder for upper-air sounding reports (Python)
${corvane_debian_about}

This package holds the Python package corvane: bulletins as tables for pandas,
data sets for xarray, indices and skew-T diagrams.")
endif()

# Has an effect from CMake 3.31 on.
if(CMAKE_LIBRARY_ARCHITECTURE AND CMAKE_INSTALL_LIBDIR MATCHES "${CMAKE_LIBRARY_ARCHITECTURE}")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_MULTIARCH same)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)
endif()

# What Debian requires in a package beyond what is installed; before CMake 3.19 the packages are made without it.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
set(CPACK_CORVANE_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_CORVANE_LIBDIR ${CMAKE_INSTALL_LIBDIR})
set(CPACK_CORVANE_MANDIR ${CMAKE_INSTALL_MANDIR})
set(CPACK_CORVANE_DEBIAN_VERSION ${corvane_debian_version})

include(CPack)
