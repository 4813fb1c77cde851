#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a Windows program under Wine: tools/wine.sh [--display] [--dpi NUMBER] FOLDER PROGRAM [ARGUMENT...]
# Wine's registry, its drive C and what it takes for the user's home lie in FOLDER, which is made by the first call;
# nothing is written anywhere else. Its fonts are this machine's, found through fontconfig. No display is needed; with
# --display the program has an X server of its own, which ends with it. The first call for a FOLDER decides how many
# pixels to the inch its programs see, usually 96.
set -euo pipefail
# Debian's Wine lies at 0x7d000000, and new kernels put its heap anywhere within the gigabyte behind. Where that takes
# the address of Windows' shared page, 0x7ffe0000, a program ends before it begins, and says nothing. Hence a heap that
# stays in its place, unless a container forbids to ask for one.
if [ "$(cat /proc/self/personality)" = 00000000 ] && setarch --addr-no-randomize true 2>/dev/null; then
    exec setarch --addr-no-randomize "$0" "$@"
fi
run=(wine)
if [ "$1" = --display ]; then
    run=("$(dirname "$(readlink -f "$0")")/xvfb.sh" wine)
    shift
fi
dpi=96
if [ "$1" = --dpi ]; then
    dpi=$2
    shift 2
fi
mkdir -p "$1/home" "$1/tmp"
folder=$(cd "$1" && pwd)
shift
# A display is seen from a desktop that is on it, which a build has a program for.
if [ ${#run[@]} = 2 ] && [ -e "$(dirname "$1")/OnDesktop.exe" ]; then run+=("$(dirname "$1")/OnDesktop.exe"); fi
export WINEPREFIX=$folder/prefix HOME=$folder/home TMPDIR=$folder/tmp
export WINEDEBUG=-all WINEARCH=win64
# Neither the .NET nor the HTML engine, which Wine would offer to download; no menu entries on the desktop.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
unset DISPLAY WAYLAND_DISPLAY XDG_RUNTIME_DIR XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME

# Windows are Wine's alone: there is no manager of windows, for which it would wait.
prepare() {
    wine wineboot --init &&
        wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f &&
        wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f &&
        wineserver --wait && touch "$folder/prepared"
}
if [ ! -e "$folder/prepared" ]; then
    (
        flock 9 # several programs may be the first
        [ -e "$folder/prepared" ] || prepare
    ) 9>"$folder/lock" >"$folder/setup.log" 2>&1 || { cat "$folder/setup.log" >&2; exit 1; }
fi
# Wine's server stays up for a while: it would end with the last program, and one that starts in that moment would be
# cut off. Its services are started with it, since they would hold on to the output of a program that starts them.
(
    flock 9
    if wineserver --persistent=20 9>&-; then wine wineboot 9>&- || true; fi # it fails when it is running already
) 9>"$folder/lock" </dev/null >/dev/null 2>&1
[ ! -t 2 ] || exec "${run[@]}" "$@"
# The first program with windows starts Wine's desktop, which holds on to its standard error for as long as others use
# the desktop: whoever reads to its end would wait for all of them.
errors=$(mktemp "$TMPDIR/errors.XXXXXX")
trap 'cat "$errors" >&2; rm "$errors"' EXIT
"${run[@]}" "$@" 2>"$errors"
