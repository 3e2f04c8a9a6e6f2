#!/bin/sh
# Random changes on copies of all reference databases, the files checked after every hundred: the
# long run of what jet_change_test does in small.
#   long_updates.sh PROGRAM REFERENCE_FOLDER [ROUNDS [SEED]]
# PROGRAM is the build's long_updates. Needs the reference data; ends with 1 where a file is unsound.
set -u
program=$1 data=$2 rounds=${3:-30} seed=${4:-1}
failed=0
for file in "$data"/corpus/*.mdb; do
  "$program" "$file" "" "$rounds" 100 "$seed" || failed=1
done
for file in "$data"/stores/*/*.[mM][dD][bB]; do
  "$program" "$file" w7rt3q8814Z "$rounds" 100 "$seed" || failed=1
done
exit $failed
