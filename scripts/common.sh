# shellcheck shell=bash
# Sourced by the scripts beside it: where the project is, what they say, and how they get what is missing.

unset CDPATH

cd_project() {
    cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit
}

say() {
    printf 'corvane: %s\n' "$*" >&2
}

missing=()

# need_command COMMAND PACKAGE: the package is wanted unless the command is there.
need_command() {
    command -v "$1" >/dev/null 2>&1 || missing+=("$2")
}

# need_header HEADER PACKAGE: the package is wanted unless the compiler finds the header.
need_header() {
    if ! command -v c++ >/dev/null 2>&1 || ! printf '#include <%s>\n' "$1" | c++ -E -x c++ - >/dev/null 2>&1; then
        missing+=("$2")
    fi
}

# need_file PATTERN PACKAGE: the package is wanted unless a file matches the pattern.
need_file() {
    compgen -G "$1" >/dev/null || missing+=("$2")
}

# Installs what is wanted, in one go, and nothing when all is there.
install_missing() {
    [ "${#missing[@]}" -gt 0 ] || return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    "${as_root[@]}" apt-get update >&2 </dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" >&2 </dev/null
    missing=()
}

need_compiler() {
    need_command c++ g++
    need_command cmake cmake
    need_command make make
}

# check WHAT COMMAND...: runs the command, a function as a rule, to the first failure in it, and ends the script when
# there is one. The output goes to the script's scratch folder $work and is shown then.
# shellcheck disable=SC2154 # work is the script's
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
