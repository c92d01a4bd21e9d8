# Completes the commands and options of qmvctl, as its own help tells them.

# The words of the help that may follow: commands, databases, tables, classes or options.
_qmvctl_words() {
  qmvctl "$@" --help 2>/dev/null | awk '
    /^(Subcommands|Tables|Classes):/ { is_list = 1; next }
    /^$/ { is_list = 0 }
    /^  database / { gsub(/.*[{]|[}].*/, ""); gsub(",", " "); print }
    is_list { print $1 }
    /^  -/ { gsub(",", " ", $1); print $1 }'
}

# Whether an option takes a file.
_qmvctl_takes_file() {
  local option=$1
  shift
  qmvctl "$@" --help 2>/dev/null | grep -qE -- "^  $option ([A-Z]+=)?FILE" ||
    qmvctl --help 2>/dev/null | grep -qE -- "^  $option FILE"
}

_qmvctl() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} each path=() words
  words=$(_qmvctl_words)
  for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ $each != -* ]] && grep -qxF -- "$each" <<<"$words"; then
      path+=("$each")
      words=$(_qmvctl_words "${path[@]}")
    fi
  done
  if [[ $previous == = ]] || { [[ $previous == --* ]] && _qmvctl_takes_file "$previous" "${path[@]}"; }; then
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "${word#=}" | sort)
    return
  fi
  ((${#path[@]} == 0)) || words+=" $(_qmvctl_words | grep '^-')"
  [[ $word == -* ]] || words=$(tr ' ' '\n' <<<"$words" | grep -v '^-')
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word" | sort -u)
}

complete -F _qmvctl qmvctl
