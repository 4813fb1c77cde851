#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Does with Debian's packages what their users do, in clean roots of Debian 12 that have nothing else.
#   tests/whole/PackagesTest.sh PACKAGES WORK
# PACKAGES is the folder that tools/packages.sh fills. WORK keeps the clean root for a day, and what was printed and drawn.
# It needs root (or sudo), the right to mount, some 2 GB of memory for what the roots change, and apt's servers.
set -euo pipefail
source=$(realpath "$(dirname "$0")/../..")
if [ "$(id -u)" != 0 ]; then
    exec sudo "$0" "$@"
fi
if [ "${3:-}" != mounts ]; then # mounts of this process alone, which end with it
    unshare --mount true 2>/dev/null || {
        echo "The packages cannot be tried here: a clean root needs mounts, and this system does not let root make them." >&2
        exit 1
    }
    exec unshare --mount "$0" "$(realpath "$1")" "$(realpath -m "$2")" mounts
fi
packages=$1 work=$2
cd "$source"
base=$work/base
mkdir -p "$work"
export LC_ALL=C.UTF-8
unset TMPDIR

# --- Clean roots ------------------------------------------------------------------------------------------------------

# A minimal system, with what packages of ours need ready in apt's cache: the checks then wait for no server.
make_base() {
    [ -z "$(find "$base.made" -mtime -1 2>/dev/null)" ] || return 0
    rm -rf "$base" "$base.made"
    local mirrors
    mapfile -t mirrors < <(apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian')
    mmdebstrap --quiet --mode=root --variant=minbase --skip=cleanup/apt --dpkgopt=force-unsafe-io \
        --aptopt='Acquire::Languages "none"' bookworm "$base" "${mirrors[@]}"
    cp /etc/resolv.conf "$base/etc/"
    touch "$base.made"
}

in_root() { # ROOT COMMAND...: in the folder of the packages, with nothing of this system's environment
    local root=$1
    shift
    env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$root" sh -c 'cd /packages && exec "$@"' sh "$@" </dev/null
}

mount_root() { # ROOT
    mkdir -p "$1/packages" "$1/examples"
    mount --bind "$packages" "$1/packages"
    mount -t proc proc "$1/proc"
    mount --bind /dev "$1/dev"
}

new_root() { # NAME: prints the path of a root like the base, whose changes are in memory
    local folder=$work/$1
    mkdir -p "$folder"
    mount -t tmpfs tmpfs "$folder"
    mkdir "$folder/upper" "$folder/work" "$folder/root"
    mount -t overlay overlay -o "lowerdir=$base,upperdir=$folder/upper,workdir=$folder/work" "$folder/root"
    mount_root "$folder/root"
    echo "$folder/root"
}

# --- Checks -----------------------------------------------------------------------------------------------------------

check() { # NAME COMMAND...: a line of what became of it
    local name=$1 output
    shift
    if output=$("$@" 2>&1); then
        echo "ok      $name"
    else
        printf 'FAILED  %s\n' "$name"
        tail -n 40 <<<"$output" | sed 's/^/        /'
    fi
}
prints() { # TEXT COMMAND...: the command prints the text, whatever its exit code
    local text=$1 output
    shift
    output=$("$@" 2>&1) || true
    grep -qF -- "$text" <<<"$output" || { printf 'expected "%s" in:\n%s\n' "$text" "$output"; return 1; }
}
none_of() { # PATTERN COMMAND...: the command works, and no line of what it prints has the pattern
    local pattern=$1 output
    shift
    output=$("$@") || { printf '%s\n' "$output"; return 1; }
    ! grep -E -- "$pattern" <<<"$output"
}
begins_with() { # BYTES FILE
    [ "$(head -c "${#1}" "$2")" = "$1" ]
}
page() { # ROOT PAGE [LEFT-OUT]: what the manual has its reader do, in an empty folder with the packages
    local root=$1 page=$2
    shift 2
    python3 tests/whole/Page.py "docs/$page.md" "$@" | sed 's/\bsudo //; s/\bapt \(install\|purge\)/& --yes/' >"$root/tmp/page.sh"
    in_root "$root" sh -c 'mkdir -p /tmp/page && cd /tmp/page && ln -sf /packages/*.deb . && sh /tmp/page.sh'
}
installed() { # ROOT: names and versions
    in_root "$1" dpkg-query -W -f '${binary:Package} ${Version} ${db:Status-Status}\n'
}
files() { # ROOT: what is there, but for what apt and dpkg keep of their own work
    (cd "$1" && find . -xdev ! -type d -printf '%p %l\n' -o -type d -printf '%p/\n') |
        grep -vE '^\./(tmp|packages|proc|dev|var/log|var/cache/apt|var/lib/apt|var/lib/dpkg/(status|available|lock|triggers/|updates/|info/$)|var/lib/dpkg/[a-z-]*-old|var/cache/ldconfig|etc/ld\.so\.cache)' |
        sort
}

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
deb_version=$(dpkg-deb -f "$packages"/utilitydll5_*.deb Version)
ours='^(utilitydll|chartutil)'
desktop="desktop-file-utils shared-mime-info" # what a desktop has that notes which program opens what

of_the_packages() {
    check "lintian has no errors and no warnings" \
        lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$packages"/*.deb
    check "the version is the project's" test "${deb_version%-*}" = "$version"
    check "no configuration files that dpkg would ask about" sh -c "! dpkg-deb -c '$packages'/utilitydll5_*.deb | grep /etc/"
}

# A server: library and program alone.
of_the_program() {
    local root sample=/usr/share/utilitydll/sample-project.ini
    root=$(new_root program)
    check "library and program install without what they recommend" \
        in_root "$root" sh -c 'apt install --yes --no-install-recommends ./utilitydll5_*.deb ./chartutil_*.deb'
    check "that brings no Qt, no GDAL and nothing of X" none_of '^(libqt|qt6|libgdal|gdal|libx11|libxcb|libgl1|libglx|libegl|x11)' installed "$root"
    check "the program tells its version" prints "chartutil $version" in_root "$root" chartutil --version
    check "a setting of the sample is read" prints 25000 in_root "$root" chartutil settings get $sample "Chart Sheet" Scale
    check "the sample's edited section is found" prints Tides in_root "$root" chartutil settings check $sample
    check "text is measured" in_root "$root" chartutil text measure "Pensacola Bay" --size 5
    check "the library finds the choices of keywords" prints "(3 choices)" \
        in_root "$root" sh -c 'echo "%project client%" >/tmp/layout && chartutil keywords list /tmp/layout'
    check "the editor's package is named" prints "the Debian package utilitydll-gui has it" \
        in_root "$root" chartutil edit /tmp/new.cdf
    check "the chart's package is named" prints "the Debian package chartutil-sheet has it" \
        in_root "$root" chartutil sheet /usr/share/utilitydll/pensacola -o /tmp/chart.svg
    check "the pictures' package is named" prints "the Debian package utilitydll-gui has it" \
        in_root "$root" chartutil colors palette --picture /tmp/palette.png
    check "there is a man page" in_root "$root" sh -c 'gzip -dc /usr/share/man/man1/chartutil.1.gz | grep -q "^\.TH"'
    local file
    for file in bash-completion/completions/chartutil zsh/vendor-completions/_chartutil fish/vendor_completions.d/chartutil.fish; do
        check "there is $file" test -s "$root/usr/share/$file"
    done
    check "no file has a path of its own to libraries" none_of 'R(UN)?PATH' \
        bash -c "readelf -d '$root'/usr/bin/chartutil '$root'/usr/lib/*/{UtilityDLL,Framework,VelmBaseR}.so.5"
}

# A developer of hosts.
of_the_host() {
    local root
    root=$(new_root host)
    check "the manual's page for hosts does what it says" page "$root" getting-started-hosts
    check "pkg-config installs" in_root "$root" apt-get install --yes pkg-config
    cp -r examples "$root/tmp/"
    check "the example builds by find_package" in_root "$root" \
        sh -c 'cmake -S /tmp/examples/settings-host -B /tmp/build && cmake --build /tmp/build'
    # By way of /lib, which is a link, headers must not be looked for in /include.
    check "find_package works where /bin comes first in the path" in_root "$root" env PATH=/bin:/usr/bin \
        sh -c 'cmake -S /tmp/examples/settings-host -B /tmp/build-bin && cmake --build /tmp/build-bin'
    check "the example builds by pkg-config" in_root "$root" sh -c \
        'g++ /tmp/examples/settings-host/main.cpp -o /tmp/by-pkg-config $(pkg-config --cflags --libs utilitydll)'
    check "its flags name no path to libraries" none_of rpath in_root "$root" pkg-config --libs utilitydll
    check "the host writes a settings file" prints "run 1" in_root "$root" sh -c 'cd /tmp && build/settings-host'
    check "the other one reads it" prints "run 2" in_root "$root" sh -c 'cd /tmp && ./by-pkg-config'
}

# Somebody who wants charts, and had the version before. There was no release yet, so the packages before are these with a
# lower version, and with one file that these no longer have.
of_charts_upgrade_and_removal() {
    local root needed old=$work/old deb name
    root=$(new_root charts)
    rm -rf "$old"
    mkdir "$old"
    for deb in "$packages"/*.deb; do
        name=$(dpkg-deb -f "$deb" Package)
        dpkg-deb -R "$deb" "$old/tree"
        sed -i "s/$deb_version/0.1-1/g" "$old/tree/DEBIAN/control"
        mkdir -p "$old/tree/usr/share/utilitydll"
        echo "of the version before" >"$old/tree/usr/share/utilitydll/gone-from-$name"
        dpkg-deb -Znone -b "$old/tree" "$old/${name}_before.deb" >/dev/null
        rm -rf "$old/tree"
    done
    mkdir "$root/before"
    mount --bind "$old" "$root/before"

    # What others have is there before, so that what is left at the end is ours.
    needed=$(in_root "$root" sh -c 'apt-get --simulate install ./*.deb' | awk -v ours="$ours" '/^Inst / && $2 !~ ours { print $2 }')
    check "what all packages need and recommend is there" in_root "$root" apt-get install --yes $needed $desktop
    files "$root" >"$work/files-before"
    check "the packages of the version before install" in_root "$root" sh -c 'apt install --yes /before/*.deb'
    check "with the file that will go" test -e "$root/usr/share/utilitydll/gone-from-chartutil"
    check "all packages install over them" in_root "$root" sh -c 'apt install --yes ./*.deb'
    check "all have the new version" none_of "$ours[^ ]* (0\\.1|.* (unpacked|half))" installed "$root"
    check "six packages are installed" test "$(installed "$root" | grep -cE "$ours[^ ]* $deb_version installed")" = 6
    check "the file is gone" sh -c "! ls '$root'/usr/share/utilitydll/gone-from-*"
    check "no package has a file that dpkg would ask about" none_of . \
        in_root "$root" dpkg-query -W -f '${Conffiles}' 'utilitydll*' 'chartutil*'
    check "the files are those of the packages" none_of . in_root "$root" dpkg --verify

    local ending
    for ending in pdf png svg dxf; do
        check "the sample chart is drawn as $ending" in_root "$root" \
            chartutil sheet /usr/share/utilitydll/pensacola -o "/tmp/chart.$ending"
    done
    check "the PDF is one" begins_with %PDF "$root/tmp/chart.pdf"
    check "the PNG is one" sh -c "head -c 4 '$root/tmp/chart.png' | grep -q PNG"
    cp "$root"/tmp/chart.* "$work/"
    check "the desktop knows the editor" prints "application/x-utilitydll-contour-definition=chartutil.desktop" \
        cat "$root/usr/share/applications/mimeinfo.cache"
    check "the manual has its first page" test -s "$root/usr/share/doc/utilitydll-doc/html/index.html"
    check "and the reference below it" test -s "$root/usr/share/doc/utilitydll-doc/html/reference/index.html"
    check "the manual's page for charts does what it says, and purges all" \
        page "$root" getting-started-charts --without "chartutil sheet pensacola -o pensacola.svg --watch"
    check "nothing of ours is installed any more" none_of "$ours" installed "$root"
    files "$root" >"$work/files-after"
    check "nothing is left behind" diff "$work/files-before" "$work/files-after"
}

# --- All of it --------------------------------------------------------------------------------------------------------

begin=$SECONDS
make_base
mount_root "$base"
{
    in_root "$base" sh -c 'apt-get install --yes --download-only ./*.deb'
    in_root "$base" apt-get install --yes --download-only g++ cmake make pkg-config $desktop
} >"$work/fetch.log" 2>&1 || { cat "$work/fetch.log" >&2; exit 1; }
echo "The clean root is ready after $((SECONDS - begin)) s."

rm -f "$work"/*.checks
(of_the_packages; of_the_program; of_the_host) >"$work/1.checks" 2>&1 &
others=$!
(of_charts_upgrade_and_removal) >"$work/2.checks" 2>&1 &
wait $! || echo "FAILED  the checks of charts ended early" >>"$work/2.checks"
wait $others || echo "FAILED  the checks of library and program ended early" >>"$work/1.checks"
cat "$work"/*.checks
passed=$(cat "$work"/*.checks | grep -c '^ok ' || true)
failed=$(cat "$work"/*.checks | grep -c '^FAILED ' || true)
printf '\n%d s\n%d passed, %d failed\n' "$((SECONDS - begin))" "$passed" "$failed"
[ "$failed" = 0 ] && [ "$passed" -gt 0 ]
