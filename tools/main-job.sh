# Sourced by ./run: the main job on the sample project, with the program that was just built.

chartutil=$PWD/build/release/bin/chartutil
