# Shared by the scripts of this folder; source it, do not run it.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=${VELUM_JOBS:-$(nproc)}

say() { printf '\n== %s\n' "$*"; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# help_if_asked "$@": prints the comment block at the head of the calling script.
help_if_asked() {
  case "${1-}" in
    -h | --help)
      sed -n '2,/^[^#]/{s/^# \{0,1\}//p;}' "$0"
      exit 0
      ;;
  esac
}

# in_presets NAME: whether CMakePresets.json has a configure preset of that name that people may use.
in_presets() {
  (cd "$top" && cmake --list-presets | grep -q "^ *\"$1\"")
}

# build PRESET [TARGET ...]: configures and builds; everything when no target is named.
build() {
  local preset=$1
  shift
  local targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  in_presets "$preset" || die "no preset '$preset'; cmake --list-presets tells which there are"
  say "Configuring ($preset)"
  (cd "$top" && cmake --preset "$preset" > "$top/build-$preset.log" 2>&1) ||
    { cat "$top/build-$preset.log"; rm -f "$top/build-$preset.log"; die "configuring failed"; }
  rm -f "$top/build-$preset.log"
  say "Building ($preset, $jobs at once)"
  (cd "$top" && cmake --build --preset "$preset" --parallel "$jobs" "${targets[@]}")
}
