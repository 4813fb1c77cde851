#!/usr/bin/env bash
# tools/dialog-pictures.sh FOLDER: takes pictures of every dialog and control there, light and dark, in English and
# German, at 100 % and 200 %.
set -euo pipefail
folder=$(realpath -m "${1:?usage: tools/dialog-pictures.sh FOLDER}")
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_test
cmake --preset release >/dev/null
cmake --build build/release --target DialogPictures FrameworkWindows FrameworkFonts >/dev/null
mkdir -p "$folder"
for language in en de; do
    for theme in light dark; do
        for scale in 1 2; do
            LANG=$language UTILITYDLL_LANGUAGE=$language QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale \
                build/release/bin/DialogPictures "$folder" "-$language-$theme-$scale" "$theme" >/dev/null
        done
    done
done
