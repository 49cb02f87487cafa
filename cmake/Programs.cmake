# corvane_add_program(NAME SOURCE...) builds and installs a program of this project, with its man page doc/NAME.1. The
# target is NAME_program, with `_` for `-`.
#
# Programs are linked without shared libraries where the toolchain can do so, since loading these is most of the time of
# a short run; otherwise with the C++ runtime inside; otherwise as usual.
set(corvane_static_link "")
set(corvane_fully_static OFF)
if(CORVANE_PROGRAM AND CORVANE_STATIC)
    if(BUILD_SHARED_LIBS)
        message(STATUS "corvane: the library is shared, linking programs dynamically")
    else()
        include(CheckCXXSourceCompiles)
        set(corvane_probe "#include <iostream>\nint main() { std::cout << 1; }")
        set(CMAKE_REQUIRED_LINK_OPTIONS -static LINKER:--gc-sections)
        check_cxx_source_compiles("${corvane_probe}" CORVANE_LINKS_STATIC)
        set(CMAKE_REQUIRED_LINK_OPTIONS -static-libstdc++ -static-libgcc)
        check_cxx_source_compiles("${corvane_probe}" CORVANE_LINKS_STATIC_RUNTIME)
        unset(CMAKE_REQUIRED_LINK_OPTIONS)
        if(CORVANE_LINKS_STATIC)
            set(corvane_static_link -static LINKER:--gc-sections)  # a program that is a third smaller
            set(corvane_fully_static ON)
        elseif(CORVANE_LINKS_STATIC_RUNTIME)
            set(corvane_static_link -static-libstdc++ -static-libgcc)
            message(STATUS "corvane: no static C library, linking only the C++ runtime statically")
        else()
            message(STATUS "corvane: no static C++ runtime, linking programs dynamically")
        endif()
    endif()
endif()

# Where the loader does not look by itself, a program says where its library is, relative to its own place.
set(corvane_rpath "")
if(BUILD_SHARED_LIBS AND NOT DEFINED CMAKE_INSTALL_RPATH AND
        NOT CMAKE_INSTALL_FULL_LIBDIR IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
        set(corvane_rpath "${CMAKE_INSTALL_LIBDIR}")
    else()
        file(RELATIVE_PATH corvane_rpath "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
        set(corvane_rpath "$ORIGIN/${corvane_rpath}")
    endif()
endif()

function(corvane_add_program name)
    string(REPLACE "-" "_" target "${name}_program")
    add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE corvane corvane_warnings)
    target_link_options(${target} PRIVATE ${corvane_static_link})
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${name}
        CXX_STANDARD 17
        CXX_EXTENSIONS OFF)
    if(corvane_rpath)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "${corvane_rpath}")
    endif()
    if(CORVANE_INSTALL)
        install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
        install(FILES ${PROJECT_SOURCE_DIR}/doc/${name}.1
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program OPTIONAL)
    endif()
endfunction()
