#compdef tsaw
# zsh completion for tsaw. The commands and their options are read from the program's own help,
# so they cannot fall behind it.

_tsaw() {
  local command="" i
  local -a candidates
  for ((i = 2; i < CURRENT; i++)); do
    case ${words[i]} in
      --root|--config|--job|--template|--set|--save-job|--screenshots|-o|--output|-D) ((i++)) ;;
      -*) ;;
      *) command=${words[i]}; break ;;
    esac
  done
  case ${words[CURRENT-1]} in
    --root|--screenshots|-o|--output) _files -/; return ;;
    --job|--save-job) _files; return ;;
    --config|--template|--set|-D) return ;;
  esac
  if [[ ${words[CURRENT]} == -* ]]; then
    candidates=(${(f)"$(tsaw ${command:+$command} --help 2>/dev/null |
      grep -oE -- '(^|[ ,])--?[A-Za-z][A-Za-z-]*' | tr -d ' ,' | sort -u)"})
    compadd -a candidates
  elif [[ -z $command ]]; then
    candidates=(${(f)"$(tsaw --help 2>/dev/null | sed -n '/^Subcommands:/,$ s/^  \([a-z][a-z-]*\) .*/\1/p')"})
    compadd -a candidates
  else
    _files
  fi
}

_tsaw "$@"
