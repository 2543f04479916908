# shellcheck shell=bash
# What every command starts with. Sourced, never run.

# shellcheck disable=SC2034  # for those who source this
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=$root/out

# Progress goes to stderr: what a program prints is all that a command writes to stdout.
step() { printf '%s\n' "$*" >&2; }

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# Prints the comment that the script $1 begins with.
print_help() { sed -n '2,${/^#/!q; s/^# \{0,1\}//; p}' "$1"; }

# A wrong call, said in one sentence.
usage_error() {
  printf '%s\n' "$*" >&2
  exit 2
}
