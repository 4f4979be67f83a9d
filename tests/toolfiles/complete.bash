# complete.bash COMPLETION PROGRAM WORDS: completes the last of WORDS (words
# separated by '|'; the last may be empty, a new word) on the command line
# PROGRAM WORDS... with the completion function of COMPLETION, and prints what
# it offers, one a line.
source "$1"
COMP_WORDS=("$2")
rest=$3
while :; do
  COMP_WORDS+=("${rest%%|*}")
  [[ $rest == *"|"* ]] || break
  rest=${rest#*|}
done
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_lumsess
if ((${#COMPREPLY[@]})); then printf '%s\n' "${COMPREPLY[@]}"; fi
