# Completion of the velmora programs for bash: commands and options as --help lists them, languages, and files.
# Installed once for each program, under the name of the program.
_velmora() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} commands command=()
  case $previous in
    --language) mapfile -t COMPREPLY < <(compgen -W "enu frf jpj" -- "$current"); return ;;
    --baseline) mapfile -t COMPREPLY < <(compgen -W "tf-idf" -- "$current"); return ;;
    --model) mapfile -t COMPREPLY < <(compgen -d -- "$current"); compopt -o filenames; return ;;
  esac
  commands=$("$1" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
  if [[ $COMP_CWORD -gt 1 && -n $commands ]]; then
    command=("${COMP_WORDS[1]}")
  fi
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(
      compgen -W "$("$1" "${command[@]}" --help 2>/dev/null |
        grep -oE '^ +(-[a-z],)?--[a-z-]+' | grep -oE '\-\-[a-z-]+')" -- "$current")
  elif [[ $COMP_CWORD -eq 1 && -n $commands ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
    compopt -o filenames
  fi
} 2>/dev/null
complete -F _velmora "${BASH_SOURCE[0]##*/}"
