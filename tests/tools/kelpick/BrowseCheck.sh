#!/bin/sh
# kelpick's browse commands end to end, headless, on a temporary tree with a temporary HOME:
# what is printed (raw bytes, one path per line), the exit codes, the options, the script steps
# and their failures. Each run starts from a fresh HOME, so that no folder remembered by an
# earlier run decides where the next dialog starts.
# Snapshots of the open dialog at 1x and 2x are left in PICTURES for people to look at.
#   BrowseCheck.sh KELPICK PICTURES
set -u
kelpick=$1 pictures=$2
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
latin1_name=$(printf 'n\351e.txt')  # not UTF-8: the file system's bytes
latin1_shown=$(printf 'n\303\251e.txt') # how the dialog shows it
. "$(dirname "$0")/CheckSupport.sh"

# A fresh HOME whose Documents, where a dialog starts when nothing else says, holds samples.
fresh() {
    export HOME="$top/home"
    rm -rf "$HOME"
    docs=$HOME/Documents
    mkdir -p "$docs/sub" "$top/tree"
    printf x >"$docs/x.txt"
    printf y >"$docs/y.md"
    printf '\211PNG\r\n\032\n' >"$docs/photo.png"
    printf z >"$docs/$latin1_name"
    printf w >"$docs/sub/w.txt"
    printf h >"$docs/.hidden.txt"
    printf a >"$top/tree/a.txt"
    # A bookmark, which the sidebar lists by its label among the places.
    mkdir -p "$HOME/.config/gtk-3.0"
    echo "file://$top/tree Projects" >"$HOME/.config/gtk-3.0/bookmarks"
}

docs=$top/home/Documents
expect 0 "$docs/x.txt$nl" '' open --script 'view:list;select:x.txt;key:return'
expect 0 "$docs/x.txt$nl" '' open --script 'view:column;select:x.txt;click:Open'
expect 1 '' '' open --script 'view:list;select:x.txt;key:escape'
expect 1 '' '' open --script 'click:Cancel'
expect 0 "$docs/$latin1_name$nl" '' open --script "view:list;select:$latin1_shown;key:return"
expect 0 "$docs/x.txt$nl$docs/y.md$nl" '' open --multiple \
    --script 'view:list;select:x.txt;select+:y.md;key:return'
expect 0 "$docs/sub/w.txt$nl" '' open --script 'view:list;open:sub;wait:200;select:w.txt;key:return'
expect 0 "$docs/x.txt$nl" '' open --sheet --script 'view:list;select:x.txt;key:return'
expect 0 "$top/tree/a.txt$nl" '' open --dir "$top/tree" --script 'view:list;select:a.txt;key:return'
expect 0 "$docs/x.txt$nl" 'is not there' open --dir "$top/nowhere" \
    --script 'view:list;select:x.txt;key:return'
# The sidebar's rows take the dialog where they lead.
expect 0 "$top/tree/a.txt$nl" '' open --script 'side:Projects;view:list;select:a.txt;key:return'
expect 0 "$docs/sub$nl" '' folder --dir "$top/tree" \
    --script 'side:home;view:list;open:Documents;wait:200;select:sub;click:Choose'
# A file of another type is hidden or cannot be selected; either way it is never chosen.
fresh
"$kelpick" open --headless --timeout 20 --types TXT,application/PDF \
    --script 'view:list;select:x.txt;select:photo.png;key:return' >"$top/out" 2>/dev/null
grep -q 'photo.png' "$top/out" && fail "--types TXT,application/PDF let photo.png be chosen"
expect 0 "$docs/sub$nl" '' folder --script 'view:list;select:sub;click:Choose'
expect 0 "$docs/x.txt$nl" '' file --script 'view:list;select:x.txt;click:Choose'
expect 0 "$docs/sub$nl" '' object --script 'view:list;select:sub;click:Choose'
expect 1 '' '' volume --script 'key:escape'
expect 0 "$docs/Fresh$nl" '' new-folder --script 'click:Create;wait:300;type:Fresh;key:return'
[ -d "$docs/Fresh" ] || fail "new-folder printed Fresh but made no folder"
expect 2 '' 'step 2: no row ".hidden.txt"' open --script 'view:list;select:.hidden.txt'
expect 0 "$docs/.hidden.txt$nl" '' open --show-hidden \
    --script 'view:list;select:.hidden.txt;key:return'
expect 0 "$docs/x.txt$nl" '' open --ok-label Take --title Pick --message Which \
    --script 'view:list;select:x.txt;click:Take'
expect 2 '' 'step 1: the button "Take" is disabled' open --ok-label Take --script 'click:Take'

# Steps that cannot be done stop the run at once with the step's number and exit 2.
expect 2 '' 'step 2: no row "nothing"' open --script 'view:list;select:nothing;key:return'
expect 2 '' 'step 1: no button "Frobnicate"' open --script 'click:Frobnicate;key:return'
expect 2 '' 'step 1: the dialog has no item 99' open --script 'click:99'
expect 2 '' 'step 1: .*sidebar' open --script 'side:Home'
expect 2 '' 'step 3: unknown step' open --script 'view:list;wait:10;dance:now'

# The snapshot shows the dialog at either scale, twice as many pixels across at 2x.
png_width() { od -An -tu1 -j16 -N4 "$1" | awk '{ print $1 * 16777216 + $2 * 65536 + $3 * 256 + $4 }'; }
mkdir -p "$pictures"
for scale in 1 2; do
    fresh
    KEL_SCALE=$scale "$kelpick" open --headless --snapshot "$pictures/open-${scale}x.png" \
        --script 'key:escape' >/dev/null 2>&1
    [ -s "$pictures/open-${scale}x.png" ] || fail "no snapshot at ${scale}x"
done
[ "$(png_width "$pictures/open-2x.png")" -eq $(($(png_width "$pictures/open-1x.png") * 2)) ] ||
    fail "the 2x snapshot is not twice as wide as the 1x one"

[ "$failures" -eq 0 ] && echo "kelpick browse commands: all checks passed"
exit "$failures"
