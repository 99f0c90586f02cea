#!/usr/bin/env bash
# Answers the rides of a list on several machines, by GNU parallel over ssh:
#
#   many-hosts.sh HOSTS LIST OUT [ENTRY=VALUE | OPTION]...
#
# HOSTS names a machine a line, as parallel's --sshloginfile takes them ("2/anna": two jobs at a time on anna), LIST a
# ride a line by its full path; rides and OUT lie in folders that all machines share. A job takes RIDES_PER_JOB rides
# (100), and has a folder OUT/NUMBER of its own. OUT/answers.ndjson gets a line for each ride, OUT/joblog one for each
# job. A job whose machine goes away begins anew on another one, and leaves out what is done; the same call again goes
# on where the last one ended. TORVANE_CLI is the program on the machines, SSH the way to them.
set -euo pipefail

hosts=$(realpath "$1") list=$(realpath "$2") out=$(realpath -m "$3")
shift 3
if [ ! -e "$out/jobs" ]; then
    mkdir -p "$out"
    split --lines="${RIDES_PER_JOB:-100}" --numeric-suffixes=1 --suffix-length=6 --additional-suffix=.txt "$list" "$out/"
    find "$out" -name '*.txt' | sort >"$out/jobs.new"
    mv "$out/jobs.new" "$out/jobs" # all of them, or none
fi

# A job prints when it is done, so that one that was cut off has printed nothing. Exit code 1 tells of rides that failed,
# each with its reason in its line: nothing that another machine could do better. What fails otherwise is tried on the
# other machines in turn: --retries stands above their number.
job="mkdir -p {.} &&
    { ${TORVANE_CLI:-torvane-cli} --json --resume --into {.} --files-from {} ride ${*@Q} >{.}/answers; [ \$? -le 1 ]; } &&
    cat {.}/answers"
parallel --ssh "${SSH:-ssh}" --sshloginfile "$hosts" --joblog "$out/joblog" --resume-failed --retries 10 \
    "$job" <"$out/jobs" >>"$out/answers.ndjson"
