#!/usr/bin/env bash
# test_installed_tree.sh <build folder> <pages' code...>: programs of one's own, built by CMake and by pkg-config
# against nothing but an installed tree, and run with the installed programs. CXX and CXXFLAGS are the tree's.
set -euo pipefail
tree=$(realpath "$(dirname "$0")/../..") build=$1
source "$tree/script/headless.sh"
prefix=$work/usr programs=$work/usr/bin
export PATH=$programs:$PATH CMAKE_PREFIX_PATH=$prefix
cmake --install "$build" --prefix "$prefix" >/dev/null
[[ $(MANPATH=$prefix/share/man man -L fr -w wagons) == "$prefix/share/man/fr/man1/wagons.1" ]]
[[ -s $prefix/share/locale/en/LC_MESSAGES/wagons.mo ]]
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name wagons-bibliocpp.pc)")
export PKG_CONFIG_PATH
mkdir "$work/own"
cp "${@:2}" "$work/own"
cd "$work/own"

by_pkg_config() { # <program> <packages...>
  "$CXX" -std=c++20 $CXXFLAGS -MD "$1.cpp" $(pkg-config --cflags --libs "${@:2}") -o "$1"
}
{ by_pkg_config shuttle wagons-bibliocpp && by_pkg_config poussoir wagons-mock_up wagons-objgraphiques; } &
cat >>CMakeLists.txt <<'END'
add_executable(shuttle shuttle.cpp)
target_link_libraries(shuttle wagons::bibliocpp)
find_package(wagons 2.0 QUIET)
if(wagons_FOUND)
  message(FATAL_ERROR "taken for version 2")
endif()
END
{ cmake -B build && cmake --build build; } >log 2>&1 || { cat log && exit 1; }
wait $!
grep -rlF "$tree" "$prefix"/{include,lib*,share} --exclude=*.a && exit 1
find . -name '*.d' -exec grep -F "$tree/" {} + && exit 1
ldd shuttle build/bin/shuttle | grep -E 'X11|fltk' && exit 1

end_plant() {
  kill "$plant"
  end_of_run
  [[ ! $area ]] || ipcrm -m "$area"
  area=
}
run_headless true
for folder in . build/bin; do
  $folder/poussoir build/bin/controleur_poussoir &
  plant=$!
  find_window poussoir
  wait_for 60 sorti 1
  end_plant
  wagons $folder/shuttle &
  plant=$!
  find_window "mine de charbon"
  hold_until 760 99 A_GAUCHE 1
  end_plant
done
# atelier finds the plant, the watcher and the chart beside itself, and the watcher the controller in PATH.
atelier controleur_mine &
plant=$!
timeout 60 xdotool search --sync --onlyvisible --name chronogramme >/dev/null
end_plant
