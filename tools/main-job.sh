# SPDX-License-Identifier: MIT
# Sourced by ./run: the main job on the sample project, with the program that was just built.

chartutil=$PWD/build/release/bin/chartutil
job=build/main-job

do_job() { # ARGUMENT... : shows the command, then runs it
    printf '\n$ chartutil'
    printf ' %q' "$@"
    printf '\n'
    "$chartutil" "$@"
}

step "Main job: the survey chart of the sample project, on a copy in $job"
rm -rf "$job"
mkdir -p "$job"
cp -r data/pensacola "$job/"
cd "$job"

echo "What does the project say, and is anything in it wrong?"
do_job check pensacola

printf '\nThe chart, as a picture to look at, to print, and for a drawing program:\n'
for format in png pdf dxf svg; do
    do_job sheet pensacola -o "pensacola.$format"
done

cd ../..
printf '\nThe chart: %s\n' "$job"/pensacola.{png,pdf,dxf,svg}
