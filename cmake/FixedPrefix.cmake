# corvane_fix_prefix(LIBDIR PREFIX) writes PREFIX into the pkg-config file below LIBDIR, in place of one relative to the
# file itself. pkg-config reads a space in it with a backslash.
function(corvane_fix_prefix libdir prefix)
    string(REPLACE " " "\\ " prefix "${prefix}")
    set(pc "${libdir}/pkgconfig/corvane.pc")
    file(READ "${pc}" text)
    string(FIND "${text}" "\n" end)
    string(SUBSTRING "${text}" ${end} -1 rest)
    file(WRITE "${pc}" "prefix=${prefix}${rest}")
endfunction()
