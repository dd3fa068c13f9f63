#!/bin/sh
# kelpick's zenity-compatible front end to end, headless, on a temporary tree with a temporary
# HOME: the same cases as the native commands, with that tool's output (paths joined by the
# separator, "|" unless told) and exit codes (1 cancel, 5 timeout, 255 error).
#   FileSelectionCheck.sh KELPICK
set -u
kelpick=$1
top=$(mktemp -d)
latin1_name=$(printf 'caf\351.txt')    # not UTF-8: the file system's bytes
latin1_shown=$(printf 'caf\303\251.txt') # how the dialog shows it
latin1_dir=$(printf 'd\351j\340')
trap 'rm -rf "$top"' EXIT
. "$(dirname "$0")/CheckSupport.sh"

fresh() {
    export HOME="$top/home"
    rm -rf "$HOME" "$top/tree"
    tree=$top/tree
    mkdir -p "$HOME" "$tree/sub" "$tree/sub2" "$tree/$latin1_dir"
    printf a >"$tree/a.txt"
    printf l >"$tree/$latin1_name"
    printf b >"$tree/b.md"
    printf c >"$tree/c.txt"
}

tree=$top/tree
fs=--file-selection

# Open, one or many, and cancel.
expect 0 "$tree/a.txt$nl" '' $fs --filename="$tree/" --script 'view:list;select:a.txt;key:return'
expect 0 "$tree/a.txt|$tree/c.txt$nl" '' $fs --multiple --filename "$tree" \
    --script 'view:list;select:a.txt;select+:c.txt;key:return'
expect 0 "$tree/a.txt::$tree/b.md$nl" '' $fs --multiple --separator=:: --filename="$tree" \
    --script 'view:list;select:a.txt;select+:b.md;key:return'
expect 1 '' '' $fs --filename="$tree/" --script 'key:escape'
# A file named by --filename is selected in its folder.
expect 0 "$tree/b.md$nl" '' $fs --filename="$tree/b.md" --script 'wait:300;key:return'
expect 0 "$tree/sub$nl" '' $fs --directory --filename="$tree" \
    --script 'view:list;select:sub;click:Choose'
expect 0 "$tree/sub|$tree/sub2$nl" '' $fs --directory --multiple --filename="$tree/" \
    --script 'view:list;select:sub;select+:sub2;click:Choose'

# Names that are not UTF-8 come back as their own bytes, as the native commands give them:
# chosen in the list, named by --filename, and saved into such a folder or over such a file.
expect 0 "$tree/$latin1_name$nl" '' $fs --filename="$tree/" \
    --script "view:list;select:$latin1_shown;key:return"
expect 0 "$tree/$latin1_name$nl" '' $fs --filename="$tree/$latin1_name" --script 'wait:300;key:return'
expect 0 "$tree/$latin1_dir/$latin1_name$nl" '' $fs --save \
    --filename="$tree/$latin1_dir/$latin1_name" --script 'key:return'
expect 1 '' '' $fs --save --confirm-overwrite --filename="$tree/$latin1_name" \
    --script 'key:return;wait:300;key:return;wait:300;key:escape'
unchanged "$tree/$latin1_name" l "--confirm-overwrite over $latin1_shown answered Cancel"
expect 0 "$tree/$latin1_name$nl" '' $fs --save --confirm-overwrite --filename="$tree/$latin1_name" \
    --script 'key:return;click:Replace'

# The first filter is in force: a file it leaves out is never chosen, and the dialog, left
# unanswered, ends at the timeout with that tool's code.
fresh
"$kelpick" $fs --headless --timeout=3 --filename="$tree" --file-filter='Text | *.TXT' \
    --file-filter='Notes | *.md' --script 'view:list;select:b.md;key:return' >"$top/out" 2>/dev/null
got=$?
[ "$got" -eq 5 ] || fail "a file outside the filter: exit $got, expected the timeout's 5"
[ -s "$top/out" ] && fail "a file outside the filter was chosen: $(cat "$top/out")"
expect 0 "$tree/c.txt$nl" '' $fs --filename="$tree" --file-filter='Text | *.TXT' \
    --script 'view:list;select:c.txt;key:return'
# Each filter is an item of the type popup.
expect 0 "$tree/b.md$nl" '' $fs --filename="$tree" --file-filter='Text | *.TXT' \
    --file-filter='Notes | *.md' --script 'view:list;popup:Notes;select:b.md;key:return'

# Save: the folder and the name come from --filename; a file is replaced without asking unless
# --confirm-overwrite asks, and then return in the alert means Cancel.
expect 0 "$tree/new.txt$nl" '' $fs --save --filename="$tree/new.txt" --script 'key:return'
[ -e "$tree/new.txt" ] && fail "--save made the file it should only name"
expect 0 "$tree/a.txt$nl" '' $fs --save --filename="$tree/a.txt" --script 'key:return'
unchanged "$tree/a.txt" a "--save over a.txt"
expect 0 "$tree/a.txt$nl" '' $fs --save --confirm-overwrite --filename="$tree/a.txt" \
    --script 'key:return;click:Replace'
expect 1 '' '' $fs --save --confirm-overwrite --filename="$tree/a.txt" \
    --script 'key:return;wait:300;key:return;wait:300;key:escape'
unchanged "$tree/a.txt" a "--confirm-overwrite answered Cancel"
expect 0 "$tree/sub/a.txt$nl" '' $fs --save --filename="$tree/sub/" \
    --script 'type:a.txt;key:return'

# On a display a person answers (a script is not run there: headless, its escape would cancel),
# and --timeout closes the dialog as that tool's does.
if command -v xvfb-run >/dev/null; then
    fresh
    env -u KEL_BACKEND xvfb-run -a "$kelpick" $fs --timeout=1 --filename="$tree/" \
        --script 'key:escape' >"$top/out" 2>&1
    got=$?
    [ "$got" -eq 5 ] || fail "--timeout on a display: exit $got ($(cat "$top/out"))"
else
    echo "SKIP --timeout on a display: no xvfb-run"
fi

# Errors: that tool's 255, with the reason on standard error.
expect 255 '' 'unknown option --colour' $fs --colour=red
expect 255 '' 'step 1: no button' $fs --filename="$tree" --script 'click:Frobnicate'
expect 255 '' 'step 2: no item "Pictures"' $fs --filename="$tree" --file-filter='*.txt' \
    --script 'view:list;popup:Pictures'

[ "$failures" -eq 0 ] && echo "kelpick --file-selection: all checks passed"
exit "$failures"
