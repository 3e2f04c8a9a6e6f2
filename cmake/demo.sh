#!/usr/bin/env bash
# Creates a demo shop: a program folder as a shop has it, and a settings folder of its own.
#
#   demo.sh BUILD-FOLDER DEMO-FOLDER
#
# Existing files stay as they are, except for the program file, which is replaced.
set -euo pipefail
build=$1 demo=$2

mkdir -p "$demo/Posdata" "$demo/Stores/Demo" "$demo/settings/program-settings"
# The file of a running program can't be overwritten, but another file can be renamed over it.
cp "$build/keystrand" "$demo/keystrand.new"
mv "$demo/keystrand.new" "$demo/keystrand"

if [ ! -e "$demo/Stores/Demo/MASTER.mdb" ]; then
  "$build/makestore" "$demo/Stores/Demo/MASTER.mdb"
fi
if [ ! -e "$demo/settings/program-settings/tavenor.ini" ]; then
  printf '[comms]\nstorename=Demo\n' >"$demo/settings/program-settings/tavenor.ini"
fi
if [ ! -e "$demo/tavenor_comms.exe" ]; then
  cat >"$demo/tavenor_comms.exe" <<'END'
#!/bin/sh
# Stands in for the communications program: logs when it was started and the settings that it found.
folder=$(dirname "$0")
{
  date '+%Y-%m-%d %H:%M:%S started; the settings hold:'
  sed 's/^/  /' "$XDG_CONFIG_HOME/program-settings/tavenor.ini"
} >>"$folder/comms.log"
END
  chmod +x "$demo/tavenor_comms.exe"
fi
