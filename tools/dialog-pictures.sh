#!/usr/bin/env bash
# tools/dialog-pictures.sh FOLDER [SCALE]: takes pictures of every dialog and control there, in English and German,
# light and dark.
set -euo pipefail
folder=$(realpath -m "${1:?usage: tools/dialog-pictures.sh FOLDER [SCALE]}")
scale=${2:-1}
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_test qt6-translations-l10n

step "Build"
cmake --preset release >/dev/null
cmake --build build/release --target DialogPictures FrameworkWindows FrameworkFonts

step "Pictures"
mkdir -p "$folder"
for language in en de; do
    for theme in light dark; do
        suffix=-$language-$theme$([ "$scale" = 1 ] || echo "-$scale")
        UTILITYDLL_LANGUAGE=$language QT_SCALE_FACTOR=$scale tools/xvfb.sh \
            build/release/bin/DialogPictures "$folder" "$suffix" "$theme" | grep -A 9 -e Failure -e PASSED
    done
done
