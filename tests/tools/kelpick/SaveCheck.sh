#!/bin/sh
# kelpick save end to end, headless, on a temporary tree with a temporary HOME: the path it
# prints (the folder and the name, as the file system's bytes; the file is never made), the
# replace alert answered each way with the file's bytes unchanged, and the options.
#   SaveCheck.sh KELPICK
set -u
kelpick=$1
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
latin1_name=$(printf 'caf\351.txt') # not UTF-8: the file system's bytes
latin1_dir=$(printf 'd\351j\340')
. "$(dirname "$0")/CheckSupport.sh"

fresh() {
    export HOME="$top/home"
    rm -rf "$HOME" "$top/tree"
    tree=$top/tree
    mkdir -p "$HOME" "$tree/sub" "$tree/$latin1_dir"
    printf a >"$tree/a.txt"
    printf l >"$tree/$latin1_name"
}

tree=$top/tree

# A new name; the name typed into the field; cancel.
expect 0 "$tree/new.txt$nl" '' save --dir "$tree" --name new.txt --script 'key:return'
[ -e "$tree/new.txt" ] && fail "save made the file it should only name"
expect 0 "$tree/fresh.md$nl" '' save --dir "$tree" --script 'type:fresh.md;key:return'
expect 1 '' '' save --dir "$tree" --name new.txt --script 'key:escape'
# Disclosed (item 9), the browser picks the folder, and a click on a file takes its name but
# keeps the dialog's extension.
expect 0 "$tree/sub/new.txt$nl" '' save --dir "$tree" --name new.txt \
    --script 'click:9;view:list;open:sub;wait:300;key:return'
expect 0 "$tree/a.md$nl" '' save --dir "$tree" --name new.md \
    --script 'click:9;view:list;select:a.txt;key:return'

# An existing name asks first. Replace gives the path; Cancel, or return, which means Cancel,
# leaves the dialog up, and the file is never touched.
expect 0 "$tree/a.txt$nl" '' save --dir "$tree" --name a.txt --script 'key:return;click:Replace'
unchanged "$tree/a.txt" a "Replace"
expect 1 '' '' save --dir "$tree" --name a.txt \
    --script 'key:return;click:Cancel;wait:300;key:escape'
expect 1 '' '' save --dir "$tree" --name a.txt \
    --script 'key:return;wait:300;key:return;wait:300;key:escape'
unchanged "$tree/a.txt" a "Cancel in the replace alert"
expect 0 "$tree/a.txt$nl" '' save --dir "$tree" --name a.txt --no-confirm --script 'key:return'
# A run that fails or times out with the alert up answers it Cancel and ends.
expect 2 '' 'step 3: no button "Frobnicate"' save --dir "$tree" --name a.txt \
    --script 'key:return;wait:300;click:Frobnicate'
fresh
timeout 60 "$kelpick" save --headless --timeout 2 --dir "$tree" --name a.txt \
    --script 'key:return' >"$top/out" 2>"$top/err"
got=$?
[ "$got" -eq 2 ] && grep -q 'timeout' "$top/err" ||
    fail "the timeout with the replace alert up: exit $got ($(cat "$top/err"))"
unchanged "$tree/a.txt" a "the timeout with the replace alert up"
unchanged "$tree/a.txt" a "--no-confirm"

# Names and folders that are not UTF-8 come back as their own bytes, and an existing one is
# still found and asked about.
expect 0 "$tree/$latin1_dir/$latin1_name$nl" '' save --dir "$tree/$latin1_dir" \
    --name "$latin1_name" --script 'key:return'
expect 1 '' '' save --dir "$tree" --name "$latin1_name" \
    --script 'key:return;click:Cancel;wait:300;key:escape'
unchanged "$tree/$latin1_name" l "Cancel over a name that is not UTF-8"
# A click on such a file names that very file, whose name the list shows as "café.txt".
expect 0 "$tree/$latin1_name$nl" '' save --dir "$tree" --name new.txt \
    --script 'click:9;view:list;select:café.txt;key:return;click:Replace'
unchanged "$tree/$latin1_name" l "Replace of a clicked file whose name is not UTF-8"

# --types: the name takes the type it has, or the first, or the one chosen in the popup.
expect 0 "$tree/report.txt$nl" '' save --dir "$tree" --name report --types txt,md \
    --script 'key:return'
expect 0 "$tree/notes.md$nl" '' save --dir "$tree" --name notes.md --types txt,md \
    --script 'key:return'
expect 0 "$tree/notes.txt$nl" '' save --dir "$tree" --name notes.md --types txt,md \
    --script 'popup:Plain text document (.txt);key:return'

# The extension is hidden unless the user showed it last time; --hide-extension hides it even
# then, and that is remembered as the user's choice. Either way the path has it.
hidden_pref() {
    grep -A1 'PutFile:0:ExtensionHidden' "$HOME/.config/kel/preferences/kelpick.json" |
        grep -q "$1"
}
for flag in '' --hide-extension; do
    fresh
    mkdir -p "$HOME/.config/kel/preferences"
    echo '{"VelmoKelServices:PutFile:0:ExtensionHidden": {"$data": "AA=="}}' \
        >"$HOME/.config/kel/preferences/kelpick.json"
    out=$("$kelpick" save --headless --timeout 20 --dir "$tree" --name a.txt $flag \
        --script 'key:cmd-a;type:b;key:return' 2>"$top/err")
    [ "$out" = "$tree/b.txt" ] || fail "save $flag with the stem typed over printed '$out'"
    if [ -n "$flag" ]; then
        hidden_pref 'AQ==' || fail "--hide-extension was not remembered"
    else
        hidden_pref 'AA==' || fail "the user's shown extension was forgotten"
    fi
done

[ "$failures" -eq 0 ] && echo "kelpick save: all checks passed"
exit "$failures"
