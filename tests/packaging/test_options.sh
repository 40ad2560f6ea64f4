#!/usr/bin/env bash
# test_options.sh <folder of programs> <folder of completions> <folder of manual pages> <version> <program...>:
# --help in both languages, the manual page and the completion know the same options of each program.
set -euo pipefail
export PATH=$1:$PATH
completions=$2 pages=$3 version=$4 wrong=0
options() { grep -oE -- '--[a-z][a-z-]*' | sort -u | xargs; }
# offered <program> <word...>: what completes the last of the words
offered() {
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
  source "$completions/$1"
  "$(complete -p "$1" | grep -o '_wagons[a-z_]*')" "$1" "${*: -1}" "${*: -2:1}"
  [[ ! ${COMPREPLY[*]} ]] || printf '%s\n' "${COMPREPLY[@]}" | sort -u | xargs
}
equal() { # <what> <seen> <expected>
  [[ $2 == "$3" ]] || { printf '%s: %s\n  expected: %s\n' "$@" && wrong=1; }
}

for program in "${@:5}"; do
  known=$(sed -n '/^.SH OPTIONS/,/^.SH EXIT/p' "$pages/$program.1" | sed 's/\\-/-/g' | options)
  for language in fr en; do
    help=$(LC_ALL=$language "$program" --help)
    equal "$program --help in $language" "$(options <<<"$help")" "$known"
    equal "$program --help in $language" "$(grep -c usage <<<"${help%%$'\n'*}")" 1
  done
  equal "$program --version" "$("$program" --version)" "$program $version"
  equal "completion of $program" "$(offered "$program" --)" "$known"
done
equal "a plant" "$(offered atelier --maquette '')" "galerie wagons"
equal "a choice" "$(offered surveillant --a-l-arret z)" zero
equal "after a file" "$(offered visionneuse log --lan)" --langue
equal "a controller" "$(offered atelier --maquette galerie controleur_mi)" controleur_mine
equal "the controller's own option" "$(offered surveillant ./shuttle --)" ""
exit $wrong
