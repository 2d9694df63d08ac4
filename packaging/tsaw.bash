# bash completion for tsaw. The commands and their options are read from the program's own help,
# so they cannot fall behind it.

# The commands tsaw --help lists.
_tsaw_commands() {
  tsaw --help 2>/dev/null | sed -n '/^Subcommands:/,$ s/^  \([a-z][a-z-]*\) .*/\1/p'
}

# The options of `tsaw [COMMAND] --help`.
_tsaw_options() {
  tsaw ${1:+"$1"} --help 2>/dev/null | grep -oE -- '(^|[ ,])--?[A-Za-z][A-Za-z-]*' | tr -d ' ,' | sort -u
}

_tsaw() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command="" i
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --root|--config|--job|--template|--set|--save-job|--screenshots|-o|--output|-D) ((i++)) ;;
      -*) ;;
      *) command=${COMP_WORDS[i]}; break ;;
    esac
  done
  case $prev in
    --root|--screenshots|-o|--output) mapfile -t COMPREPLY < <(compgen -d -- "$cur"); return ;;
    --job|--save-job) mapfile -t COMPREPLY < <(compgen -f -- "$cur"); return ;;
    --config|--template|--set|-D) return ;;
  esac
  if [[ $cur == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_tsaw_options "$command")" -- "$cur")
  elif [[ -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_tsaw_commands)" -- "$cur")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
  fi
}
complete -F _tsaw tsaw
