#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# tools/release.sh packs what was checked, from the tag and not from the folder, and refuses what is no release. The checks
# and the packing, which take an hour, are stand-ins here that say what they were given.
set -euo pipefail
script=$(realpath "$(dirname "$0")/../../tools/release.sh")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C HOME=$work GIT_CONFIG_NOSYSTEM=1 GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
git init -q -b main "$work/repository"
cd "$work/repository"
mkdir tools .ci
cp "$script" tools/
printf 'project(UtilityDLL VERSION 5.1.0.7 LANGUAGES CXX\n' >CMakeLists.txt
printf '# Changes\n\n## 5.1.0.7, 2027-01-31\n' >CHANGELOG.md
printf 'title: UtilityDLL\nversion: 5.1.0.7\n' >CITATION.cff
printf '#!/bin/sh\necho "day $SOURCE_DATE_EPOCH"; exit "$(cat result)"\n' >.ci/run
echo 0 >result
printf '#!/bin/sh\ncp what "$1/utilitydll5.deb"\n' >tools/packages.sh
printf '#!/bin/sh\ncp what "$1"\n' >tools/windows-package.sh
chmod +x .ci/run tools/*.sh
echo "as tagged" >what
commit() { git add -A && git commit -q -m "$1"; }

release() { tools/release.sh "$@" >"$work/said" 2>&1; }
fail() { cat "$work/said" >&2; echo "ReleaseTest: $1" >&2; exit 1; }
refused() { # EXPECTED TAG: nothing is packed, and this is said
    ! release "$2" "$work/refused" || fail "$2 was packed"
    grep -qF -- "$1" "$work/said" || fail "it does not say: $1"
    [ ! -e "$work/refused" ] || fail "something was packed of $2"
}

commit release
refused "there is no tag v5.1.0.7" v5.1.0.7
git tag v5.1.0.7
git tag v5.1
refused "the tag should be v5.1.0.7" v5.1
echo "as in the folder" >what
release v5.1.0.7 "$work/packed" || fail "it was not packed"
grep -q "day $(git log -1 --format=%ct)" "$work/said" || fail "the checks do not know the day"
(cd "$work/packed" && sha256sum --check --strict SHA256SUMS >/dev/null) || fail "SHA256SUMS does not hold"
[ "$(ls "$work/packed" | tr '\n' ' ')" = "SHA256SUMS utilitydll-5.1.0.7-windows-x86_64.zip utilitydll-5.1.0.7.tar.xz utilitydll5.deb " ] ||
    fail "not these files: $(ls "$work/packed")"
grep -qx "as tagged" "$work/packed/utilitydll5.deb" || fail "not what was tagged was packed"
[ "$(tar -xOf "$work/packed/utilitydll-5.1.0.7.tar.xz" utilitydll-5.1.0.7/what)" = "as tagged" ] || fail "other sources"
! release v5.1.0.7 "$work/packed" || fail "it wrote over a release"
grep -q "is not empty" "$work/said" || fail "it does not say that the folder is not empty"

echo 1 >result
commit broken
git tag -f v5.1.0.7 >/dev/null
refused "day" v5.1.0.7
echo 0 >result
for row in "CHANGELOG.md|, 2027-01-31|, not yet released|no heading '## 5.1.0.7, YEAR-MONTH-DAY'" \
    "CITATION.cff|5.1.0.7|5.1.0.6|CITATION.cff has another version"; do
    IFS='|' read -r file from to expected <<<"$row"
    cp "$file" "$work/kept"
    sed -i "s/$from/$to/" "$file"
    commit "$file"
    git tag -f v5.1.0.7 >/dev/null
    refused "$expected" v5.1.0.7
    cp "$work/kept" "$file"
done
echo "a release is packed from its tag, and what is none is refused"
