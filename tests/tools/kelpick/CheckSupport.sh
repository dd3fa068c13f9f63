# Sourced by kelpick's end-to-end checks. The sourcing script sets kelpick (the program) and
# top (a temporary folder it removes) and defines fresh, which makes a new HOME and tree.

failures=0
nl='
'

fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

# expect CODE EXPECTED-STDOUT STDERR-PATTERN ARGS...: a headless run on a fresh tree, stdout
# compared byte for byte.
expect() {
    code=$1 wanted=$2 err_pattern=$3
    shift 3
    fresh
    "$kelpick" "$@" --headless --timeout 20 >"$top/out" 2>"$top/err"
    got=$?
    printf '%s' "$wanted" >"$top/wanted"
    [ "$got" -eq "$code" ] || fail "kelpick $*: exit $got, expected $code ($(cat "$top/err"))"
    cmp -s "$top/out" "$top/wanted" || fail "kelpick $*: printed '$(cat "$top/out")'"
    [ -z "$err_pattern" ] || grep -q -- "$err_pattern" "$top/err" ||
        fail "kelpick $*: stderr was '$(cat "$top/err")'"
    # Under the sanitizers a fault may end the run with the very code a cancel gives.
    grep -q 'Sanitizer\|runtime error' "$top/err" && fail "kelpick $*: $(cat "$top/err")"
    return 0
}

# unchanged FILE BYTES WHAT: the file still holds exactly those bytes.
unchanged() {
    [ "$(cat "$1" 2>/dev/null)" = "$2" ] || fail "$3: $1 was changed or removed"
}
