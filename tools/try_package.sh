#!/bin/sh
# Runs in a root that holds the least of a system and, in /tmp, the packages: installs and starts both programs.
set -eu
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 HOME=/tmp/home QT_QPA_PLATFORM=offscreen
unset DISPLAY WAYLAND_DISPLAY
install() { apt-get install -q -y --no-install-recommends "$@" </dev/null >/tmp/apt.log 2>&1 || { cat /tmp/apt.log; exit 1; }; }
example=/usr/share/quorvelant/examples/demo.qvp

install /tmp/quorvelant_*.deb
quorvelant --version
quorvelant check "$example"
quorvelant author "$example" -o /tmp/disc --quiet
test -s /tmp/disc/VIDEO_TS.IFO
if dpkg-query -W libqt6widgets6 2>/dev/null; then
  echo "The command line brings the library of windows along" >&2
  exit 1
fi

install /tmp/quorvelant-window_*.deb
quorvelant-window --version
status=0
timeout 10 quorvelant-window "$example" || status=$?
[ "$status" -eq 124 ] || { echo "The window ended with $status" >&2; exit 1; }
echo "The window stood for ten seconds"
