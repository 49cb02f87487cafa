# The Python package, for the Debian package python3-corvane: built by setup.py with Debian's Python. For any other use
# `pip install .` at the top of the sources needs no CMake.
set(corvane_python /usr/bin/python3)
set(corvane_python_lib ${PROJECT_BINARY_DIR}/python/lib)
add_custom_target(corvane_python ALL
    COMMAND ${corvane_python} setup.py --quiet build
        --build-base ${PROJECT_BINARY_DIR}/python --build-lib ${corvane_python_lib}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Building the Python package"
    VERBATIM)
execute_process(COMMAND ${corvane_python} -c "import sys; print('%d.%d' % sys.version_info[:2])"
    OUTPUT_VARIABLE corvane_python_version OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${corvane_python} -c "import sys; print('%d.%d' % (sys.version_info[0], sys.version_info[1] + 1))"
    OUTPUT_VARIABLE corvane_python_next OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT corvane_python_version)
    message(FATAL_ERROR "CORVANE_PYTHON is on and ${corvane_python} does not run")
endif()

# Below /usr Debian's Python looks in a folder without its version, below any other prefix in one with it. The prefix is
# known only at installation: cpack has its own.
install(CODE "
    set(folder lib/python${corvane_python_version}/dist-packages)
    if(CMAKE_INSTALL_PREFIX MATCHES \"/usr$\")
        set(folder lib/python3/dist-packages)
    endif()
    file(INSTALL \"${corvane_python_lib}/corvane\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}/\${folder}\"
        PATTERN __pycache__ EXCLUDE)" COMPONENT python)
