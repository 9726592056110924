# Completion of lershow for bash.

# The names of the tunnels that the command line shows, from its state file, its server or the sample network.
_lershow_tunnels() {
   local -a source=()
   local -i at
   for ((at = 1; at + 1 < ${#COMP_WORDS[@]}; at++)); do
      case "${COMP_WORDS[at]}" in
         --state | --connect) source=("${COMP_WORDS[at]}" "${COMP_WORDS[at + 1]}") ;;
      esac
   done
   # Never from standard input, which is the user's.
   [ "${source[1]-}" = - ] && return
   timeout 2 "${COMP_WORDS[0]}" tunnel --json "${source[@]}" </dev/null 2>/dev/null |
      python3 -c 'import json, sys; print("\n".join(json.load(sys.stdin)["tunnels"]))' 2>/dev/null
}

_lershow() {
   local current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
   local words='' file=''
   COMPREPLY=()

   case "$previous" in
      --state | --connect | --socket | --trace) file=yes ;;
      check | dump) [[ "$current" != --* ]] && file=yes ;;
      --format) words="text json" ;;
      --tunnels | --seed | --damage | --watch | --max-clients | --client-timeout | --mode) return ;;
   esac
   if [ -n "$file" ]; then
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
   fi

   # The trace options may stand before the command.
   local -i at=1
   while ((at < COMP_CWORD)) && [[ "${COMP_WORDS[at]}" == -* ]]; do
      [ "${COMP_WORDS[at]}" = --trace ] && at+=1
      at+=1
   done
   local command='' shared="--format --json --state --connect --watch --trace --trace-text --help"
   ((at < COMP_CWORD)) && command="${COMP_WORDS[at]}"
   local -i behind=COMP_CWORD-at
   if [ -z "$words" ]; then
      case "$command $behind" in
         " "*) words="tunnel status state serve schema trace --trace --trace-text --help --version" ;;
         "state 1") words="check sample synth --help" ;;
         "schema 1") words="tunnel status --help" ;;
         "trace 1") words="dump --help" ;;
         "tunnel "*) words="--summary --lsp --detail --history --sub-tunnel $shared" ;;
         "status "*) words="$shared" ;;
         "serve "*) words="--socket --state --client-timeout --max-clients --mode --help" ;;
         "state "*)
            words="--help"
            [ "${COMP_WORDS[at + 1]}" = synth ] && words="--tunnels --seed --damage --help" ;;
         "schema "* | "trace "*) words="--help" ;;
      esac
   fi

   if [ "$command $behind" = "tunnel 1" ] && [[ "$current" != -* ]]; then
      local name
      while IFS= read -r name; do  # compgen -W would run what stands in a name
         [[ "$name" == "$current"* ]] && COMPREPLY+=("$(printf %q "$name")")
      done < <(_lershow_tunnels)
   fi
   [[ "$current" != -* && ${#COMPREPLY[@]} -gt 0 ]] && return
   local IFS=' '
   mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _lershow lershow
