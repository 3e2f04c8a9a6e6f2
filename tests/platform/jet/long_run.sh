#!/bin/sh
# Runs the tests of store files on real files, which the format's own engine wrote. Then makes random
# changes to copies of these and of the reference stores; each file is checked after every hundred
# changes.
#
#   long_run.sh BUILD FOLDER [ROUNDS [SEED]]
#
# BUILD is a build with tests and with the target long_updates; FOLDER holds the real files, without
# passwords, of both generations. Exits with 1 where a test fails or a file is unsound.
set -u
build=$1 folder=$2 rounds=${3:-30} seed=${4:-1}
jet=$build/tests/platform/jet
failed=0
for filter in jet_read_test:'IndexWalk.*Each*:Reading.Agrees*:Damage.ChangedBytes*:Damage.CutsAnd*' \
  jet_change_test:'RandomUpdates.KeepFiles*'; do
  STORE_FILES=$folder "$jet/${filter%%:*}" --gtest_brief=1 --gtest_filter="${filter#*:}" || failed=1
done
for file in "$folder"/*.[mM][dD][bB]; do
  "$jet/long_updates" "$file" "" "$rounds" 100 "$seed" || failed=1
done
for file in "$build"/reference-stores/stores/*/*.[mM][dD][bB]; do
  "$jet/long_updates" "$file" w7rt3q8814Z "$rounds" 100 "$seed" || failed=1
done
exit $failed
