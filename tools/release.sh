#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds, checks and packs a release from its tag, in a clone of its own: what lies in the folder here does not matter.
#   tools/release.sh TAG FOLDER     TAG is v and the version, as v5.0.0.20; FOLDER is made, and gets
#     *.deb                                   the packages for Debian 12
#     utilitydll-VERSION-windows-x86_64.zip   the package for Windows
#     utilitydll-VERSION.tar.xz               the sources
#     SHA256SUMS
# Where a check fails nothing is packed. It takes as long as .ci/run, about an hour on two cores.
set -euo pipefail
refuse() { echo "tools/release.sh: $*" >&2; exit 2; }
[ $# = 2 ] || refuse "usage: tools/release.sh TAG FOLDER"
tag=$1 folder=$(realpath -m "$2")
cd "$(dirname "$0")/.."

git rev-parse --quiet --verify "refs/tags/$tag^{commit}" >/dev/null || refuse "there is no tag $tag; 'git tag' lists them"
at_tag() { git show "refs/tags/$tag:$1"; }
version=$(at_tag CMakeLists.txt | sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p')
[ "$tag" = "v$version" ] || refuse "CMakeLists.txt has the version $version at $tag; the tag should be v$version"
at_tag CHANGELOG.md | grep -qE "^## ${version//./\\.}, [0-9]{4}-[0-9]{2}-[0-9]{2}\$" ||
    refuse "CHANGELOG.md has no heading '## $version, YEAR-MONTH-DAY' at $tag"
at_tag CITATION.cff | grep -qx "version: $version" || refuse "CITATION.cff has another version than $version at $tag"
[ -z "$(ls -A "$folder" 2>/dev/null)" ] || refuse "$folder is not empty; name a new folder"

work=$(mktemp -d)
trap 'rm -rf "$work" 2>/dev/null || sudo rm -rf "$work"' EXIT # the clean root of the packages' checks belongs to root
git -c advice.detachedHead=false clone --quiet --branch "$tag" . "$work/source"
cd "$work/source"
# Pages and packages bear the day of the tagged commit.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
.ci/run

mkdir "$work/packed"
tools/packages.sh "$work/packed"
tools/windows-package.sh "$work/packed/utilitydll-$version-windows-x86_64.zip"
git archive --format=tar --prefix="utilitydll-$version/" HEAD | xz -9 >"$work/packed/utilitydll-$version.tar.xz"
cd "$work/packed"
sha256sum -- * >"$work/SHA256SUMS"
mv "$work/SHA256SUMS" .
mkdir -p "$folder"
cp -- * "$folder"
printf '\n%s: checked and packed\n' "$tag"
ls -l "$folder"
echo "Publish these, and then keep the interface for the next release: tools/abi.sh --keep BUILD (CONTRIBUTING.md)."
