#!/bin/sh
# kelpick's answers to the command line itself: help and version on standard output with exit 0,
# errors with exit 2, and a script step that cannot be done ending the run at once.
#   CommandLineCheck.sh KELPICK VERSION
set -u
kelpick=$1 version=$2
. "$(dirname "$0")/CheckSupport.sh"

# expect CODE STDOUT-PATTERN STDERR-PATTERN ARGS...: stdout matched, not compared.
expect() {
    code=$1 out_pattern=$2 err_pattern=$3
    shift 3
    out=$("$kelpick" "$@" 2>stderr.txt)
    got=$?
    [ "$got" -eq "$code" ] || fail "kelpick $*: exit $got, expected $code"
    printf '%s\n' "$out" | grep -q -- "$out_pattern" || fail "kelpick $*: stdout was '$out'"
    [ -z "$err_pattern" ] || grep -q -- "$err_pattern" stderr.txt || fail "kelpick $*: stderr was '$(cat stderr.txt)'"
}

cd "$(mktemp -d)" || exit 1
expect 0 '^usage: kelpick ask-save' '' --help
expect 0 '^usage: kelpick ask-save' '' ask-review --help
expect 0 '^usage: kelpick ask-save' '' ask-save --document Report -h
expect 0 "^kelpick $version\$" '' --version
expect 2 '' 'unknown command ask-nothing' ask-nothing
# The zenity-compatible front: its help, and its options alone are no command.
expect 0 '^usage: kelpick ask-save' '' --file-selection --save --help
expect 2 '' 'unknown command --save' --save --filename=/tmp
# Alert buttons are pressed by their titles too.
expect 1 '^cancel$' '' ask-discard --document Plan --headless --script 'click:Cancel'
expect 0 '^save$' '' ask-save --document Plan --headless --script 'click:Save'
# The dialog would wait ten minutes for an answer; the failed click must end it long before.
expect 2 '^$' 'step 1: the dialog has no item 9' ask-discard --document Plan --headless --timeout 600 --script 'click:9'
[ "$failures" -eq 0 ] && echo "kelpick command line: all checks passed"
exit "$failures"
