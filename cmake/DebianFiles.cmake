# Run by cpack on the trees that become Debian packages, one below CPACK_TEMPORARY_DIRECTORY for each component:
# compresses the man pages, fixes the prefix in the pkg-config file, and adds the files that belong in
# /usr/share/doc/PACKAGE. The copyright file is the licence, if there is one at the top of the sources.
cmake_minimum_required(VERSION 3.19)

if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/FixedPrefix.cmake)

function(corvane_gzip file)
    execute_process(COMMAND gzip -9nf "${file}" RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "gzip failed on ${file}")
    endif()
endfunction()

function(corvane_doc_file source target)
    configure_file(${source} ${target} COPYONLY)
    file(CHMOD ${target} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} name)
    set(package ${CPACK_DEBIAN_${name}_PACKAGE_NAME})
    set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
    set(doc "${root}/share/doc/${package}")

    file(GLOB pages "${root}/${CPACK_CORVANE_MANDIR}/man1/*.1")
    foreach(page IN LISTS pages)
        corvane_gzip(${page})
    endforeach()

    if(component STREQUAL "development" AND NOT IS_ABSOLUTE "${CPACK_CORVANE_LIBDIR}")
        corvane_fix_prefix("${root}/${CPACK_CORVANE_LIBDIR}" "${CPACK_PACKAGING_INSTALL_PREFIX}")
    endif()

    file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/changelog.Debian
        "corvane (${CPACK_CORVANE_DEBIAN_VERSION}) unstable; urgency=medium\n\n"
        "  * New upstream version, packaged by its own build.\n\n"
        " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
    corvane_doc_file(${CPACK_TEMPORARY_DIRECTORY}/changelog.Debian ${doc}/changelog.Debian)
    file(REMOVE ${CPACK_TEMPORARY_DIRECTORY}/changelog.Debian)
    corvane_gzip(${doc}/changelog.Debian)
    if(EXISTS ${CPACK_CORVANE_SOURCE_DIR}/CHANGELOG.md)
        corvane_doc_file(${CPACK_CORVANE_SOURCE_DIR}/CHANGELOG.md ${doc}/changelog)
        corvane_gzip(${doc}/changelog)
    endif()
    foreach(licence IN ITEMS LICENSE LICENSE.txt LICENSE.md)
        if(EXISTS ${CPACK_CORVANE_SOURCE_DIR}/${licence})
            corvane_doc_file(${CPACK_CORVANE_SOURCE_DIR}/${licence} ${doc}/copyright)
        endif()
    endforeach()

    # Whatever the umask was.
    file(GLOB_RECURSE entries LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/${component}/*)
    foreach(entry IN LISTS entries)
        if(IS_DIRECTORY ${entry})
            file(CHMOD ${entry} PERMISSIONS
                OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
        endif()
    endforeach()
endforeach()
