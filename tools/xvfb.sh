#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# tools/xvfb.sh COMMAND...: runs it with an X display of its own, whose number the server chooses.
set -euo pipefail
coproc Xvfb -displayfd 3 -noreset -screen 0 2560x1600x24 3>&1 2>/dev/null
server=$COPROC_PID
trap 'kill $server; wait $server || true' EXIT
read -r number <&"${COPROC[0]}"
DISPLAY=:$number QT_QPA_PLATFORM=xcb "$@"
