# Sourced by the front doors: where things are, and how to speak.
set -eu

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=$root/out
shipped=$root/dist/Quillet
export LC_ALL=C.UTF-8

say() { printf '%s\n' "$*" >&2; }
die() { say "$(basename "$0"): $*"; exit 1; }

# hold LOCK COMMAND… runs it while nobody else in this checkout holds the same lock. The lock is not
# inherited by what the command leaves running.
hold() {
  local lock=$out/$1.lock
  shift
  mkdir -p "$out"
  flock --close "$lock" "$@"
}
