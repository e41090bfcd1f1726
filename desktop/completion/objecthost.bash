# Completion of objecthost for bash: the program itself says what may stand where.
_objecthost() {
  local words=() word line
  # What bash has divided at "=" and ":" belongs together.
  for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
    if ((${#words[@]})) && [[ $word == [=:] || (-n $word && ${words[-1]} == *[=:]) ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  COMPREPLY=()
  while IFS=$'\t' read -r line _; do
    COMPREPLY+=("$line")
    if [[ $line == *= ]]; then compopt -o nospace 2> /dev/null || :; fi
  done < <("${COMP_WORDS[0]}" --complete "${words[@]}" 2> /dev/null)
}
complete -o default -F _objecthost objecthost
