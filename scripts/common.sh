# shellcheck shell=bash disable=SC2154 # $usage and $work are set by the scripts
# Sourced by the scripts in this folder: where the project is, what they say, and how they install what is missing.

unset CDPATH
project=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)

say() {
    printf 'corvane: %s\n' "$*" >&2
}

# ---- arguments: a script sets $usage first --------------------------------------------------------------------------

# usage_if_asked "$@": shows the usage on standard output and ends the script if the first argument is --help.
usage_if_asked() {
    case ${1:-} in
    -h | --help)
        printf '%s\n' "$usage"
        exit 0
        ;;
    esac
}

# wrong_usage [WHAT]: shows the usage on standard error and ends the script.
wrong_usage() {
    [ $# -eq 0 ] || say "$*"
    printf '%s\n' "$usage" >&2
    exit 2
}

# no_arguments "$@": for a script that takes none.
no_arguments() {
    usage_if_asked "$@"
    [ $# -eq 0 ] || wrong_usage "unknown argument: $1"
}

# ---- packages -------------------------------------------------------------------------------------------------------

missing=()   # packages that the script cannot do without
optional=()  # packages that it can do without

# need_command COMMAND PACKAGE: the package is needed unless the command is there.
need_command() {
    command -v "$1" >/dev/null 2>&1 || missing+=("$2")
}

has_header() {
    command -v c++ >/dev/null 2>&1 && printf '#include <%s>\n' "$1" | c++ -E -x c++ - >/dev/null 2>&1
}

# need_header HEADER PACKAGE: the package is needed unless the compiler finds the header.
need_header() {
    has_header "$1" || missing+=("$2")
}

# want_header HEADER PACKAGE: the same for a package that not every system has.
want_header() {
    has_header "$1" || optional+=("$2")
}

# need_file PATTERN PACKAGE: the package is needed unless a file matches the pattern.
need_file() {
    compgen -G "$1" >/dev/null || missing+=("$2")
}

want_file() {
    compgen -G "$1" >/dev/null || optional+=("$2")
}

python=/usr/bin/python3  # Debian's packages belong to it, whatever python3 is first in the path

has_module() {
    "$python" -c "import importlib.util, sys; sys.exit(importlib.util.find_spec('$1') is None)" 2>/dev/null
}

# need_module MODULE PACKAGE: the package is needed unless Debian's Python finds the module.
need_module() {
    has_module "$1" || missing+=("$2")
}

want_module() {
    has_module "$1" || optional+=("$2")
}

need_compiler() {
    need_command c++ g++
    need_command cmake cmake
    case ${CMAKE_GENERATOR:-} in
    Ninja*) need_command ninja ninja-build ;;
    *) need_command make make ;;
    esac
}

can_be_root() {
    [ "$(id -u)" -eq 0 ] || { command -v sudo >/dev/null 2>&1 && { [ -t 2 ] || sudo -n true 2>/dev/null; }; }
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# Whether apt knows a package.
is_available() {
    [ -n "$(apt-cache show "$1" 2>/dev/null)" ]
}

# Drops the optional packages that apt does not know.
drop_unavailable() {
    local package available=()
    for package in "${optional[@]}"; do
        if is_available "$package"; then
            available+=("$package")
        else
            say "this system has no package $package: continuing without it"
        fi
    done
    optional=("${available[@]}")
}

# Installs in one go what is missing. Ends the script with the names of the packages when that is not possible.
install_missing() {
    if [ "${#missing[@]}" -eq 0 ] && compgen -G '/var/lib/apt/lists/*Release' >/dev/null; then
        drop_unavailable
    fi
    [ "${#missing[@]}" -gt 0 ] || [ "${#optional[@]}" -gt 0 ] || return 0
    local packages=("${missing[@]}" "${optional[@]}")
    local by_hand="these packages are missing: ${packages[*]}; install them as root: apt-get install ${packages[*]}"
    if ! command -v apt-get >/dev/null 2>&1 || ! can_be_root; then
        if [ "${#missing[@]}" -eq 0 ]; then
            say "continuing without optional packages: ${optional[*]}"
            optional=()
            return 0
        fi
        say "$by_hand"
        exit 1
    fi
    (
        lock "$project/scripts"
        as_root apt-get update >&2 </dev/null || say "apt-get update failed, continuing with the existing package lists"
        drop_unavailable
        [ "${#missing[@]}" -gt 0 ] || [ "${#optional[@]}" -gt 0 ] || exit 0
        packages=("${missing[@]}" "${optional[@]}")
        say "installing ${packages[*]}"
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 \
            install -y --no-install-recommends "${packages[@]}" >&2 </dev/null
    ) || {
        say "$by_hand"
        exit 1
    }
    missing=()
    optional=()
}

# ---- folders that only one script at a time may use -----------------------------------------------------------------

# lock FOLDER: waits until no other script holds the folder, and holds it until the end of the shell.
lock() {
    local descriptor
    command -v flock >/dev/null 2>&1 || return 0
    exec {descriptor}<"$1"
    if ! flock -w 1 "$descriptor"; then
        say "waiting for another script that uses $1"
        flock "$descriptor"
    fi
}

# build_folder FOLDER: makes a folder of the project to build in, and locks it.
build_folder() {
    if ! mkdir -p "$project/$1" 2>/dev/null || [ ! -w "$project/$1" ]; then
        say "$project/$1 cannot be written; build elsewhere: cmake -S '$project' -B FOLDER && cmake --build FOLDER"
        exit 1
    fi
    lock "$project/$1"
    # Headers that the build makes have the same names for ccache in every folder.
    export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$project/$1}
}

# ---- tests ----------------------------------------------------------------------------------------------------------

# make_locale FOLDER: makes a locale with a decimal comma below the folder, for tests that need one.
make_locale() {
    local locale=de_DE.UTF-8
    if [ ! -e "$1/$locale/LC_NUMERIC" ]; then
        rm -rf "$1"
        mkdir -p "$1"
        localedef -i de_DE -f UTF-8 "$1/new" >/dev/null 2>&1 || true  # 1 after mere warnings
        [ ! -e "$1/new/LC_NUMERIC" ] || mv "$1/new" "$1/$locale"
    fi
    if [ -e "$1/$locale/LC_NUMERIC" ]; then
        export LOCPATH=$1
    else
        say "no locale with a decimal comma can be made (Debian: locales): a test that needs one may be skipped"
    fi
}

# check WHAT COMMAND...: runs the command, usually a function, up to the first failure in it, and ends the script when
# there is one. The output goes to the script's scratch folder $work and is shown then.
check() {
    local what=$1 status
    shift
    set +e
    (set -ex; "$@") >"$work/log" 2>&1
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        cat "$work/log" >&2
        say "FAILED: $what"
        exit 1
    fi
    printf 'ok: %s\n' "$what"
}
