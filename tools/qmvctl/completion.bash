# Completes the commands and options of qmvctl, as its own help tells them.

# What the help of a command offers: its commands, its values (databases, tables or classes), or its options.
_qmvctl_words() {
  local kind=$1
  shift
  qmvctl "$@" --help 2>/dev/null | awk -v kind="$kind" '
    /^[A-Z][a-z]*:/ { section = $1; next }
    /^$/ { section = "" }
    kind == "commands" && section == "Subcommands:" { print $1 }
    kind == "values" && (section == "Tables:" || section == "Classes:") { print $1 }
    kind == "values" && /^  database / { gsub(/.*[{]|[}].*/, ""); gsub(",", "\n"); print }
    kind == "options" && /^  -/ { gsub(",", "\n", $1); print $1 }'
}

# Whether an option of a command takes such a value.
_qmvctl_takes() {
  local value=$1 option=$2
  shift 2
  { qmvctl "$@" --help; qmvctl --help; } 2>/dev/null | grep -E -- "^  $option ([A-Z]+=)?$value( |$)" &>/dev/null
}

_qmvctl() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} each path=() option='' value='' words=''
  for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ -n $option ]]; then
      [[ $each == = ]] || option=
    elif [[ $each == -* ]]; then
      ! _qmvctl_takes '[A-Z]+' "$each" "${path[@]}" || option=$each
    elif _qmvctl_words commands "${path[@]}" | grep -xF -- "$each" >/dev/null; then
      path+=("$each")
    elif _qmvctl_words values "${path[@]}" | grep -xF -- "$each" >/dev/null; then
      value=$each
    fi
  done
  if [[ -n $option ]] && ! _qmvctl_takes FILE "$option" "${path[@]}"; then
    COMPREPLY=()
  elif [[ -n $option || $previous == = ]]; then
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "${word#=}" | sort)
  else
    if [[ $word == -* ]]; then
      words="$(_qmvctl_words options "${path[@]}") $(_qmvctl_words options)"
    elif [[ -z $value ]]; then
      words="$(_qmvctl_words commands "${path[@]}") $(_qmvctl_words values "${path[@]}")"
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word" | sort -u)
  fi
}

complete -F _qmvctl qmvctl
