#!/usr/bin/env bash
# Feeds the Apple-target check a known-bad variant of a real backend file and passes only if
# the check refuses it for the expected reason. A variant that changes nothing, or a check
# that accepts it, fails the test: either would make the check's green light meaningless.
#   refuse-variant.sh CLANG RESPONSE-FILE PASS SOURCE SED-SCRIPT EXPECTED-DIAGNOSTIC [PASS-FLAGS…]
set -euo pipefail
clang=$1 rsp=$2 pass=$3 source=$4 edit=$5 expected=$6
shift 6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
variant="$work/$(basename "$source")"
sed -e "$edit" "$source" >"$variant"
if cmp -s "$source" "$variant"; then
  echo "the edit '$edit' changed nothing in $source: the variant is stale" >&2
  exit 1
fi
flags=(-fsyntax-only)
[ "$pass" = analyze ] && flags=("$@")
if "$clang" "@$rsp" "${flags[@]}" "$variant" >"$work/out" 2>&1; then
  echo "the check accepted the bad variant ($edit) of $source" >&2
  exit 1
fi
if ! grep -q -- "$expected" "$work/out"; then
  echo "the check refused the variant, but not with '$expected':" >&2
  cat "$work/out" >&2
  exit 1
fi
echo "refused as expected: $(grep -m1 -- "$expected" "$work/out")"
