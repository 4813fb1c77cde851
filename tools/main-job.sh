# Sourced by ./run: the main job on the sample project, with the program that was just built.

chartutil=$PWD/build/release/bin/chartutil
job=build/main-job

do_job() { # ARGUMENT... : shows the command, then runs it
    printf '\n$ chartutil'
    printf ' %q' "$@"
    printf '\n'
    "$chartutil" "$@"
}

step "Main job: the settings file of the sample project, on a copy in $job"
rm -rf "$job"
mkdir -p "$job"
cp data/sample-project.ini "$job/"
cd "$job"

echo "Each section carries a seal, a checksum of its keys. Which of them were edited by hand?"
echo "(The offset in [Tides] was; the command says so and ends with code 1.)"
edited=0
do_job settings check sample-project.ini || edited=$?
[ "$edited" = 1 ] || { echo "run: the hand edit in [Tides] was not found (exit code $edited)" >&2; exit 1; }

printf '\nNow the chart gets another scale, and every section its seal:\n'
do_job settings set sample-project.ini "Chart Sheet" Scale 20000
do_job settings seal sample-project.ini

printf '\nThe saved file:\n'
do_job settings check sample-project.ini
do_job settings show sample-project.ini "Chart Sheet"
do_job settings show sample-project.ini Tides

printf '\nThe depths of the sheet, as they will be written on it:\n'
do_job text sounding 12.34 -1.25 --precision 1 --presentation lowered-decimals --underline-drying --picture depths.svg

printf '\nWhat the job changed, byte for byte (< the sample project, > the copy):\n'
diff --text ../../data/sample-project.ini sample-project.ini | tr -d '\r' || true
cd ../..
printf '\nDone: %s/sample-project.ini\n' "$job"
