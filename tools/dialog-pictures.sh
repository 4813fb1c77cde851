#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Takes pictures of every dialog and control, in English and German.
#   tools/dialog-pictures.sh FOLDER [SCALE]      light and dark
#   tools/dialog-pictures.sh --windows FOLDER    as Wine shows those of Windows, FOLDER/windows-*.png
set -euo pipefail
if [ "${1:-}" = --windows ]; then
    preset=windows themes=light
    shift
else
    preset=release themes='light dark'
fi
folder=$(realpath -m "${1:?usage: tools/dialog-pictures.sh [--windows] FOLDER [SCALE]}")
scale=${2:-1}
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_test
if [ $preset = windows ]; then
    prepare $packages_windows
    targets=DialogPictures
    prefix=Z:$folder/windows-
    pictures=(tools/wine.sh --display build/windows/wine build/windows/bin/DialogPictures.exe)
else
    prepare qt6-translations-l10n
    targets='DialogPictures FrameworkWindows FrameworkFonts'
    prefix=$folder/
    pictures=(tools/xvfb.sh build/release/bin/DialogPictures)
fi

step "Build"
cmake --preset $preset >/dev/null
cmake --build build/$preset --target $targets

step "Pictures"
mkdir -p "$folder"
for language in en de; do
    for theme in $themes; do
        suffix=-$language$([ "$themes" = light ] || echo "-$theme")$([ "$scale" = 1 ] || echo "-$scale")
        UTILITYDLL_LANGUAGE=$language QT_SCALE_FACTOR=$scale \
            "${pictures[@]}" "$prefix" "$suffix" "$theme" | grep -A 9 -e Failure -e PASSED
    done
done
