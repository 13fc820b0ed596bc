# shellcheck shell=bash
# What ./run, ./test and .ci/run share. To be sourced from the project's root.

# Running our own Python leaves nothing behind in the source tree.
export PYTHONDONTWRITEBYTECODE=1

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# need LIST...: installs the packages of packaging/packages-LIST.txt that are missing.
need() {
    local -a lists=("${@/#/packaging/packages-}")
    scripts/install-packages "${lists[@]/%/.txt}" || exit 1
}

# belongs_here PRESET: whether build/PRESET was configured for the project in this place. A build
# folder that came with a moved or copied project still means its old place.
belongs_here() {
    [[ $(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "build/$1/CMakeCache.txt") -ef . ]]
}

# is_configured PRESET: whether build/PRESET can be built as it is.
is_configured() { [[ -f build/$1/build.ninja ]] && belongs_here "$1"; }

# configure PRESET OPTION...: makes or refreshes build/PRESET.
configure() {
    local preset=$1
    local -a fresh=()
    shift
    if [[ -f build/$preset/CMakeCache.txt ]] && ! belongs_here "$preset"; then
        fresh=(--fresh)
    fi
    say "Configuring build/$preset."
    cmake --preset "$preset" "${fresh[@]}" "$@" >"build/configure-$preset.log" 2>&1 || {
        cat "build/configure-$preset.log" >&2
        fail "CMake could not configure build/$preset; its own words are above."
    }
}

# build PRESET TARGET...: builds targets, or everything without a name.
build() {
    local preset=$1
    shift
    say "Building build/$preset${*:+ ($*)}."
    cmake --build "build/$preset" ${1:+--target "$@"} </dev/null ||
        fail "The build in build/$preset failed; the compiler's words are above."
}

# one_at_a_time LOCK COMMAND...: runs a command while nobody else runs one under the same lock.
one_at_a_time() {
    local lock=$1 held
    shift
    mkdir -p "${lock%/*}" || fail "The folder ${lock%/*} cannot be made; the project must lie where you can write."
    exec {held}>"$lock" || fail "The file $lock cannot be written."
    if ! flock -n "$held"; then
        say "Another run is at work here; waiting for it."
        flock "$held" || fail "Waiting for the other run failed."
    fi
    # The command runs without the handle, so that no child of it can keep the lock.
    eval '"$@"' "$held>&-"
    exec {held}>&-
}

# alone COMMAND...: runs a command that configures or builds.
alone() { one_at_a_time build/.building "$@"; }

# timed WHAT COMMAND...: runs a command and keeps how long it took, for told_times. WHAT is a few words.
times=()
timed() {
    local what=$1 begin=$SECONDS code
    shift
    "$@"
    code=$?
    times+=("$(printf '%4d s  %s' $((SECONDS - begin)) "$what")")
    return $code
}
# told_times: what has taken how long so far.
told_times() { printf '%s\n' "${times[@]}"; }
