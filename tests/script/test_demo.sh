#!/usr/bin/env bash
# test_demo.sh <folder of the programs>: script/demo takes its controller from where its user is, blanks and all.
set -euo pipefail
export programs=$1
demo=$(realpath "$(dirname "$0")/../../script/demo")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/a plant"
cd "$work/a plant"
unset DISPLAY

for nothing in nothing ./nothing "$PWD/nothing" "$PWD"; do
  "$demo" "$nothing" 2>said && exit 1
  grep "$nothing is not there" said
done

printf '#!/bin/sh\necho "$PWD" "$@" >run && mv run ran\n' >"its controller"
chmod +x "its controller"
for controller in "its controller" "./its controller" "$PWD/its controller"; do
  "$demo" "$controller" "two words" &
  until [[ -e ran ]]; do kill -0 $! && sleep 0.05 || exit 1; done
  kill $!
  wait $! || true
  [[ $(<ran) == "$PWD two words -automemlink "* ]]
  ipcrm -m "$(sed 's/.* //' ran)" 2>/dev/null || true # gone, if the demo had come to know it
  rm ran
done
