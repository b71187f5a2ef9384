# Completion of tallyvane for bash. Files are offered where the program has nothing to offer.

# The word as the program would get it. Its quote may still be open.
_tallyvane_unquoted() { # WORD
  local word=$1 quote="" char result=""
  while [ -n "$word" ]; do
    char=${word:0:1} word=${word:1}
    if [[ $char == \\ && $quote != \' ]]; then
      result+=${word:0:1} word=${word:1}
    elif [[ -n $quote && $char == "$quote" ]]; then
      quote=
    elif [[ -z $quote && $char == [\"\'] ]]; then
      quote=$char
    else
      result+=$char
    fi
  done
  printf '%s' "$result"
}

# The text as it is written after the quote that the word began with, or without one. Bash closes the quote.
_tallyvane_quoted() { # TEXT QUOTE
  case $2 in
    \") printf '%s' "$1" | sed 's/["\\$`]/\\&/g' ;;
    \') printf '%s' "${1//\'/\'\\\'\'}" ;;
    *) printf '%q' "$1" ;;
  esac
}

_tallyvane() {
  local -a words=()
  local word quote="" candidate
  for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do words+=("$(_tallyvane_unquoted "$word")"); done
  [[ ${COMP_WORDS[COMP_CWORD]} != [\"\']* ]] || quote=${COMP_WORDS[COMP_CWORD]:0:1}
  word=${words[-1]}
  COMPREPLY=()
  while IFS=$'\t' read -r candidate _; do
    [[ ${candidate,,} == "${word,,}"* ]] && COMPREPLY+=("$(_tallyvane_quoted "$candidate" "$quote")")
  done < <("${COMP_WORDS[0]}" complete -- "${words[@]}" 2>/dev/null)
}

complete -o default -F _tallyvane tallyvane
