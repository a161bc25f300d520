# shellcheck shell=bash
# What the scripts beside this file share; read with `source`, never run.
unset CDPATH
root=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." && pwd -P)
self=scripts/$(basename -- "$0")

# Progress goes to standard error: standard output belongs to what a script is asked for.
say() {
    printf '%s: %s\n' "$self" "$*" >&2
}

fail() {
    say "$@"
    exit 1
}

# for_preset PRESET COMMAND...: runs the command in the root, where CMake looks for the presets.
for_preset() {
    local command=("${@:2}")
    # Where the kernel spreads addresses widely, a sanitizer may not find room for its shadow memory.
    if [[ $1 == *san || $1 == fuzz ]] && setarch --addr-no-randomize true 2>/dev/null; then
        command=(setarch --addr-no-randomize "${command[@]}")
    fi
    (cd -- "$root" && "${command[@]}")
}

# configure PRESET
configure() {
    for_preset "$1" cmake --preset "$1"
}

# build PRESET [cmake --build arguments]
build() {
    for_preset "$1" cmake --build --preset "$1" --parallel "$(nproc)" "${@:2}"
}
