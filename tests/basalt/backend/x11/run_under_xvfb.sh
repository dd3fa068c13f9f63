#!/usr/bin/env bash
# kelpick and a toolbox window on a real X server: Xvfb on a free display, driven by xdotool,
# xclip, setxkbmap and x11probe (what a window manager, a file manager and a screenshot tool
# do). Every wait is on a condition with a deadline. Pictures taken through the server go to
# the artifacts folder.
#   run_under_xvfb.sh KELPICK FIELD_WINDOW X11PROBE ARTIFACTS POPUP_WINDOW CLIPBOARD SHEET_WINDOW
set -uo pipefail
kelpick=$1 field=$2 probe=$3 artifacts=$4 popup=$5 clipboard=$6 sheetwin=$7
mkdir -p "$artifacts"
work=$(mktemp -d)
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_DATA_HOME=$work/home/.local/share
mkdir -p "$HOME"
unset KEL_BACKEND GDK_SCALE
passed=0 failed=0
servers=()

cleanup() {
    for pid in "${servers[@]}"; do kill "$pid" 2>/dev/null; done
    rm -rf "$work"
}
trap cleanup EXIT

check() { # name, got, want
    if [ "$2" == "$3" ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "FAIL $1: got [$2], want [$3]"
    fi
}

# Polls a command until its output is the value; false after the deadline. (A condition
# written as test "$(...)" would be worked out once, before the polling.)
eventually_says() { # value, command...
    local want=$1; shift
    eventually says "$want" "$@"
}
says() { [ "$("${@:2}")" == "$1" ]; }

# Polls a command until it succeeds; false after the deadline.
eventually() {
    local deadline=$((SECONDS + 20))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || return 1
        sleep 0.05
    done
}

# Starts an Xvfb on a display nobody uses; sets server_pid and server_display. Without
# -noreset the server starts afresh whenever its last client leaves, and with it goes the
# keyboard layout setxkbmap gave it.
start_server() {
    local fd_file=$work/display.$RANDOM
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset "$@" 3>"$fd_file" >/dev/null 2>&1 &
    server_pid=$!
    servers+=($!)
    eventually test -s "$fd_file" || { echo "Xvfb did not start" >&2; exit 1; }
    server_display=:$(head -1 "$fd_file")
}

# Runs a program in the background: its output goes to $work/NAME.out, its status to
# $work/NAME.rc once it ends, its process id to $work/NAME.pid.
launch() {
    local name=$1; shift
    rm -f "$work/$name.rc"
    (
        "$@" >"$work/$name.out" 2>"$work/$name.err" &
        echo $! >"$work/$name.pid"
        wait $!
        echo $? >"$work/$name.rc"
    ) &
    eventually test -s "$work/$name.pid"
}

# Waits for the program to end; prints "OUTPUT|STATUS".
outcome() {
    eventually test -s "$work/$1.rc" || echo "TIMEOUT"
    echo "$(cat "$work/$1.out")|$(cat "$work/$1.rc" 2>/dev/null)"
}

# The window of a launched program, once it shows. Found by process id: a window of the run
# before may still be on its way out.
# Width and height of a PNG, from its header.
png_size() {
    python3 -c 'import struct, sys
print(*struct.unpack(">II", open(sys.argv[1], "rb").read(24)[16:]))' "$1"
}

xclip_holds_text() { [ -n "$(xclip -o -selection clipboard 2>/dev/null | head -c 1)" ]; }

# xdotool complains on stderr that a server without a window manager has no focus window.
xdotool() { command xdotool "$@" 2>/dev/null; }

# Whether a window manager has taken the display, and whether it has framed the window.
wm_running() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -c 'window id'; }
frame_of() { xwininfo -children -id "$1" | sed -n 's/^ *Parent window id: \(0x[0-9a-f]*\).*/\1/p'; }
framed() { [ "$(frame_of "$1")" != "$(xwininfo -root | sed -n 's/.*Window id: \(0x[0-9a-f]*\).*/\1/p')" ]; }

window_of() {
    timeout 20 xdotool search --sync --onlyvisible --pid "$(cat "$work/$1.pid")" 2>/dev/null |
        head -1
}

# Clicks a point of the window's content, given in points and scaled to pixels.
click_at() { # window, x, y, scale
    xdotool mousemove --window "$1" $(($2 * $4)) $(($3 * $4)) click 1
}

start_server
export DISPLAY=$server_display

# ---- The ask alerts on a real display, answered by keys, by clicks and by the close button.
ask_alert() { # name, answer action, kelpick options...
    local name=$1 action=$2; shift 2
    launch "$name" "$kelpick" "$@"
    local window
    window=$(window_of "$name")
    [ -n "$window" ] || { echo "FAIL $name: no window"; failed=$((failed + 1)); return; }
    # The desktop gives the new window the keyboard, as a window manager would.
    xdotool windowfocus --sync "$window"
    eval "$action"
}

# Keys go to the focused window without --window: with it, xdotool looks the window up
# between press and release, so a press that ends the program leaves its key held down, and
# the server (which outlives its clients) repeats it into the next window.
ask_alert save-by-return 'xdotool key Return' ask-save --document "Résumé.txt"
check "ask-save answered by Return" "$(outcome save-by-return)" "save|0"

ask_alert cancel-by-escape 'xdotool key Escape' ask-save --document a
check "ask-save answered by Escape" "$(outcome cancel-by-escape)" "cancel|1"

# The alert is 440 x 134 points: Don't Save at the left, Cancel and Save at the right.
ask_alert dont-save-by-click 'click_at $window 60 102 1' ask-save --document a
check "Don't Save clicked" "$(outcome dont-save-by-click)" "dont-save|0"
ask_alert cancel-by-click 'click_at $window 295 102 1' ask-save --document a
check "Cancel clicked" "$(outcome cancel-by-click)" "cancel|1"

# What a window manager reads, then its close button.
read_properties_and_close() {
    properties=$(xprop -id "$1" _NET_WM_WINDOW_TYPE _NET_WM_STATE WM_CLASS _NET_WM_PID)
    "$probe" close "$1"
}
ask_alert closed 'read_properties_and_close $window' ask-discard --document a
check "the close button cancels" "$(outcome closed)" "cancel|1"
check "an alert is a modal dialog for the window manager" "$(grep -c -e _DIALOG -e _MODAL \
    -e '"kelpick", "Kelpick"' -e "_NET_WM_PID(CARDINAL) = $(cat "$work/closed.pid")" \
    <<<"$properties")" 4

# ---- Snapshots through the server at scale 1 and 2, and the screen as the user sees it.
for scale in 1 2; do
    launch "snapshot$scale" env GDK_SCALE=$scale "$kelpick" ask-save --document "Résumé.txt" \
        --snapshot "$artifacts/ask-save-x11-scale$scale.png"
    window=$(window_of "snapshot$scale")
    eventually test -s "$artifacts/ask-save-x11-scale$scale.png"
    "$probe" shot "$artifacts/screen-scale$scale.png"
    check "snapshot at scale $scale" "$(png_size "$artifacts/ask-save-x11-scale$scale.png")" \
        "$((440 * scale)) $((134 * scale))"
    click_at "$window" 380 102 "$scale"
    check "Save clicked at scale $scale" "$(outcome snapshot$scale)" "save|0"
done

# The open dialog on a folder of samples, pictured by the server at scale 1 and 2 (at 2x the
# window is cut to the 640 x 400 points of the screen), then cancelled by Escape.
samples=$work/samples
mkdir -p "$samples/Projects"
printf 'Quarterly figures\n' >"$samples/Quarterly Report.txt"
printf '%%PDF-1.4\n' >"$samples/Invoice 2026.pdf"
for scale in 1 2; do
    launch "open$scale" env GDK_SCALE=$scale "$kelpick" open --dir "$samples" \
        --snapshot "$artifacts/open-x11-scale$scale.png"
    window=$(window_of "open$scale")
    eventually test -s "$artifacts/open-x11-scale$scale.png"
    xdotool windowfocus --sync "$window"
    xdotool key Escape
    check "the open dialog cancelled at scale $scale" "$(outcome open$scale)" "|1"
done
check "the open dialog's snapshot" "$(png_size "$artifacts/open-x11-scale1.png")" "720 480"
check "the open dialog's snapshot at 2x" "$(png_size "$artifacts/open-x11-scale2.png")" "1280 756"

# The save dialog, collapsed and then disclosed by its button right of the name, pictured by
# the server at scale 1 and 2. Disclosed, it is taller than the room below it: it rises to
# show whole at 1x, and at 2x, taller than the screen, to show its top. At 2x it is cut to
# the screen's 640 points of width, which moves the button left.
window_height() { xdotool getwindowgeometry --shell "$1" | grep '^HEIGHT='; }
height_differs() { [ "$(window_height "$1")" != "$2" ]; }
# Pictures the window once it has held still for two seconds: the disclosure is animated,
# and the browser fills its columns (the parents of the samples are full) after that.
settled_picture() { # file, window
    local deadline=$((SECONDS + 30)) since=$SECONDS
    "$probe" shot "$1" "$2"
    while [ $SECONDS -lt $deadline ]; do
        sleep 0.1
        "$probe" shot "$1.next.png" "$2"
        if ! cmp -s "$1" "$1.next.png"; then
            mv "$1.next.png" "$1"
            since=$SECONDS
        elif [ $((SECONDS - since)) -ge 2 ]; then
            rm -f "$1.next.png"
            return
        fi
    done
    failed=$((failed + 1))
    echo "FAIL the picture $1 did not settle"
}
window_edges() { # window: "top bottom" in pixels
    eval "$(xdotool getwindowgeometry --shell "$1")"
    echo "$Y $((Y + HEIGHT))"
}
for scale in 1 2; do
    # A home of its own: the dialog remembers being disclosed.
    launch "save$scale" env GDK_SCALE=$scale XDG_CONFIG_HOME="$work/save$scale" \
        "$kelpick" save --dir "$samples" --name "Untitled.txt"
    window=$(window_of "save$scale")
    xdotool windowfocus --sync "$window"
    collapsed=$(window_height "$window")
    settled_picture "$artifacts/save-x11-scale$scale.png" "$window"
    check "the collapsed save dialog pictured at scale $scale" \
        "$(png_size "$artifacts/save-x11-scale$scale.png")" "$((scale == 1 ? 720 : 1280)) $((122 * scale))"
    click_at "$window" $((scale == 1 ? 532 : 492)) 22 "$scale"
    eventually height_differs "$window" "$collapsed" ||
        echo "FAIL the save dialog did not disclose at scale $scale"
    settled_picture "$artifacts/save-disclosed-x11-scale$scale.png" "$window"
    read -r top bottom <<<"$(window_edges "$window")"
    if [ "$scale" == 1 ]; then
        check "the disclosed save dialog shows whole" "$((top >= 0 && bottom <= 800))" 1
    else
        check "the disclosed save dialog shows its top at 2x" "$top" 0
    fi
    xdotool key Escape
    check "the save dialog cancelled at scale $scale" "$(outcome save$scale)" "|1"
done

# ---- A field typed into with a German layout, dead keys included, pasted into and copied
# out of, and a file dropped onto its window.
setxkbmap -layout de
check "the server took the German layout" "$(setxkbmap -query | grep -c 'layout: *de')" 1
launch field "$field"
window=$(window_of field)
xdotool windowfocus --sync "$window"
check "the title is UTF-8" "$(xdotool getwindowname "$window")" "Field — ü"
# The keys at the places of US y ' ; - = e: z ä ö ß, then a dead acute and e.
"$probe" keys "$window" 29 48 47 20 21 26
printf 'pasted ✓' | xclip -selection clipboard -i
eventually xclip_holds_text
xdotool key ctrl+v
check "a file dropped onto the window" "$("$probe" drop "$window" file:///tmp/a%20b)" "accepted"
check "a file the window's drag tracking refuses while it hovers" \
    "$("$probe" drop "$window" file:///tmp/c.bad)" "refused"
xdotool key ctrl+a ctrl+c
typed="zäößépasted ✓"
eventually_says "$typed" xclip -o -selection clipboard
check "the field's text reaches the clipboard" "$(xclip -o -selection clipboard)" "$typed"
"$probe" close "$window"
check "typed, composed and pasted text" "$(outcome field)" "drop: file:///tmp/a%20b
text: $typed|0"
setxkbmap -layout us

# ---- The wheel and the pointer's shape. This server's pointer has no scroll valuators, so the
# wheel comes as core buttons: each turn is one line on its axis, never two. The shape is an
# arrow over the window, an I-beam over its field (x 20 to 380, y 40 to 62), a resize arrow
# over the open dialog's divider right of the sidebar, and a busy window stays busy over its
# field (the busy shape turns, so it is told by being neither of the others). The shape changes as the window's loop handles the motion, which a wheel turn after
# it proves done.
shape_differs() { [ "$("$probe" cursor)" != "$1" ]; }
wheel_turns() { grep -c '^wheel' "$work/$1.out"; }
move_and_settle() { # program, window, x, y
    local turns
    turns=$(wheel_turns "$1")
    xdotool mousemove --window "$2" "$3" "$4" click 4
    eventually_says $((turns + 1)) wheel_turns "$1"
    "$probe" cursor
}
xdotool mousemove 1000 700
root_shape=$("$probe" cursor)
launch shapes "$field"
window=$(window_of shapes)
arrow=$(move_and_settle shapes "$window" 200 100)
ibeam=$(move_and_settle shapes "$window" 100 50)
check "an arrow over the window, not the root's shape" "$([ "$arrow" != "$root_shape" ] && echo yes)" yes
check "an I-beam over the field" "$([ "$ibeam" != "$arrow" ] && echo yes)" yes
check "the arrow again off the field" "$(move_and_settle shapes "$window" 200 100)" "$arrow"
xdotool click 5 click 6 click 7
eventually_says 6 wheel_turns shapes
"$probe" close "$window"
check "one line per turn of the wheel, on its axis" "$(outcome shapes | grep '^wheel' | sort | uniq -c |
    tr -s ' ' | tr '\n' '/')" " 1 wheel: x -1/ 1 wheel: x 1/ 1 wheel: y -1/ 3 wheel: y 1/"
launch busy "$field" busy
window=$(window_of busy)
neither_arrow_nor_ibeam() { [ "$1" != "$arrow" ] && [ "$1" != "$ibeam" ] && echo yes; }
check "a busy shape" "$(neither_arrow_nor_ibeam "$(move_and_settle busy "$window" 200 100)")" yes
check "a busy window stays busy over its field" \
    "$(neither_arrow_nor_ibeam "$(move_and_settle busy "$window" 100 50)")" yes
"$probe" close "$window"
outcome busy >/dev/null
launch divider "$kelpick" open --dir "$samples"
window=$(window_of divider)
xdotool mousemove --window "$window" 300 200
eventually shape_differs "$root_shape"
xdotool mousemove --window "$window" 184 200
check "a resize arrow over the sidebar's divider" "$(eventually shape_differs "$arrow" && echo yes)" yes
xdotool mousemove --window "$window" 300 200
check "the arrow again off the divider" "$(eventually_says "$arrow" "$probe" cursor && echo yes)" yes
xdotool windowfocus --sync "$window"
xdotool key Escape
outcome divider >/dev/null

# ---- A change of monitors reaches the display-change callbacks: this server keeps its one
# output, but RandR monitors may be set on it, and the window's greatest-area display follows.
displays_told() { grep -c '^display' "$work/$1.out"; }
launch monitors "$field"
window=$(window_of monitors)
xrandr --setmonitor LEFT 640/170x800/210+0+0 none
eventually_says 1 displays_told monitors
xrandr --delmonitor LEFT
eventually_says 2 displays_told monitors
"$probe" close "$window"
check "a monitor added and taken away" "$(outcome monitors | grep '^display' | tr '\n' /)" \
    "display: 0 0 640 800/display: 0 0 1280 800/"

# ---- Popup menus, opened by a press on the button: chosen by click-click, by
# press-drag-release, by keys and by typing; dismissed by Escape and by a click elsewhere; a
# click on a disabled item leaves the menu open; a long menu is cut to the screen and scrolls.
# The window's content is at (160, 120) and the button at (20, 40) in it, so the menu opens
# with the current item's row at y 160. Rows are 22 points from y 4, the separator after the
# third 9 points.
row_top() { # item
    if [ "$1" -le 4 ]; then echo $((4 + 22 * ($1 - 1))); else echo $((79 + 22 * ($1 - 5))); fi
}
item_y() { # item, current item: the global y of the item's middle while the menu is open
    echo $((160 - $(row_top "$2") + $(row_top "$1") + 11))
}
visible_windows() { xdotool search --onlyvisible --pid "$(cat "$work/$1.pid")" | wc -l; }
menu_open() { eventually_says 2 visible_windows "$1"; }
menu_closed() { eventually_says 1 visible_windows "$1"; }
open_menu() { # program
    click_at "$window" 100 51 1
    menu_open "$1" || echo "FAIL the menu of $1 did not open"
}
choices() { grep -c '^chose' "$work/$1.out"; }
# The program's last line once it is the one wanted, or whatever it is after the deadline:
# the choice is printed just after the menu's window goes.
last_line() { # program, wanted line
    eventually_says "$2" tail -1 "$work/$1.out"
    tail -1 "$work/$1.out"
}

launch popup "$popup"
window=$(window_of popup)
open_menu popup
"$probe" shot "$artifacts/popup-menu-x11.png"
xdotool mousemove 230 "$(item_y 5 1)" click 1
menu_closed popup
check "click-click chooses" "$(last_line popup "chose: 5")" "chose: 5"

xdotool mousemove --window "$window" 100 51 mousedown 1
menu_open popup
xdotool mousemove 230 "$(item_y 2 5)" mouseup 1
menu_closed popup
check "press-drag-release chooses" "$(last_line popup "chose: 2")" "chose: 2"

open_menu popup
xdotool mousemove 230 "$(item_y 3 2)" click 1
xdotool mousemove 230 "$(item_y 1 2)" click 1
menu_closed popup
check "a disabled item leaves the menu open" "$(last_line popup "chose: 1")" "chose: 1"
open_menu popup
xdotool key Escape
menu_closed popup
open_menu popup
xdotool mousemove 1000 700 click 1
menu_closed popup
check "Escape and a click elsewhere choose nothing" "$(choices popup)" 3

open_menu popup
xdotool key Down Down Down Return
menu_closed popup
check "arrows skip the disabled item and the separator" "$(last_line popup "chose: 6")" "chose: 6"
open_menu popup
xdotool type al
xdotool key Return
menu_closed popup
check "typing selects by prefix" "$(last_line popup "chose: 1")" "chose: 1"
"$probe" close "$window"
check "the popup's value" "$(outcome popup | tail -1)" "value: 1|0"

# At scale 2 the menu opens at the same place in points, drawn with twice the pixels.
launch popup2 env GDK_SCALE=2 "$popup"
window=$(window_of popup2)
click_at "$window" 100 51 2
menu_open popup2 || echo "FAIL the menu of popup2 did not open"
"$probe" shot "$artifacts/popup-menu-x11-scale2.png"
xdotool mousemove 460 $((2 * $(item_y 5 1))) click 1
menu_closed popup2
check "a menu at scale 2 chooses" "$(last_line popup2 "chose: 5")" "chose: 5"
"$probe" close "$window"
outcome popup2 >/dev/null

# 60 items, 1315 points: the menu fills the screen's 800. With the last item current it is
# scrolled to the end (515 points), item 59 in the row at y 752 to 774; three notches of the
# wheel up scroll 66 points, putting item 56 there and a scroll arrow below it.
launch long "$popup" long
window=$(window_of long)
open_menu long
xdotool key End Return
menu_closed long
check "End chooses the last item of a long menu" "$(last_line long "chose: 60")" "chose: 60"
open_menu long
"$probe" shot "$artifacts/popup-menu-long-x11.png"
xdotool mousemove 230 763 click 4 click 4 click 4
xdotool click 1
menu_closed long
check "the wheel scrolls a long menu" "$(last_line long "chose: 56")" "chose: 56"
"$probe" close "$window"
outcome long >/dev/null

# ---- A sheet: a modal dialog of its parent for the window manager, centred at the top of
# the parent's content (400 points wide, the sheet 200), and moving with it.
launch sheet "$sheetwin"
eventually xdotool search --onlyvisible --name '^Sheet$'
parent=$(xdotool search --onlyvisible --name '^Parent$')
sheet=$(xdotool search --onlyvisible --name '^Sheet$')
check "a sheet belongs to its parent" \
    "$(xprop -id "$sheet" WM_TRANSIENT_FOR _NET_WM_STATE | grep -c -e "$(printf '0x%x' "$parent")" -e _MODAL)" 2
sheet_x() { xdotool getwindowgeometry --shell "$sheet" | grep '^X='; }
check "a sheet opens at the top of its parent" \
    "$(xdotool getwindowgeometry --shell "$sheet" | grep -e '^X=' -e '^Y=' | tr '\n' ' ')" "X=260 Y=120 "
xdotool windowmove "$parent" 300 200
eventually_says X=400 sheet_x
check "a sheet moves with its parent" \
    "$(xdotool getwindowgeometry --shell "$sheet" | grep -e '^X=' -e '^Y=' | tr '\n' ' ')" "X=400 Y=200 "
kill "$(cat "$work/sheet.pid")"
outcome sheet >/dev/null

# ---- A large text through the clipboard both ways: 3 MB is more than xclip and we send in
# one piece, so it goes in pieces (INCR).
python3 -c 'import sys
line = "".join(chr(0x20 + i % 95) for i in range(99)) + "\n"
sys.stdout.write(line * 30000 + "ünïcödé ✓")' >"$work/large.txt"
xclip -selection clipboard -i "$work/large.txt"
eventually xclip_holds_text
"$clipboard" get >"$work/large.got"
check "a large text read from another program" "$(cmp -s "$work/large.txt" "$work/large.got" && echo same)" same
launch serve "$clipboard" put "$work/large.txt"
eventually grep -q serving "$work/serve.out"
xclip -o -selection clipboard >"$work/large.back"
check "a large text read by another program" "$(cmp -s "$work/large.txt" "$work/large.back" && echo same)" same
kill "$(cat "$work/serve.pid")"
outcome serve >/dev/null

# ---- Under a window manager, which frames each window (its title bar above the content) and
# answers each move with a notice of its own. The save dialog opens centred with its frame on
# the screen and holds still there: a place the server reports must never be asked for again,
# or the dialog and the window manager would move it back and forth for good. A click lands
# where it would without a frame.
start_server
export DISPLAY=$server_display
openbox --sm-disable >/dev/null 2>&1 &
servers+=($!)
eventually_says 1 wm_running
launch framed "$kelpick" save --dir "$samples" --name "Untitled.txt"
window=$(window_of framed)
eventually framed "$window"
# Where the window's content is on the screen, and its frame.
place_of() { xwininfo -id "$1" | sed -n 's/^ *Absolute upper-left [XY]: *//p' | tr '\n' ' '; }
check "a framed save dialog opens centred" "$(place_of "$window")" "280 339 "
read -r frame_x frame_y <<<"$(place_of "$(frame_of "$window")")"
check "its frame shows whole above and left" "$((frame_y >= 0 && frame_y < 339 && frame_x >= 0))" 1
check "it holds still" "$(for _ in $(seq 40); do place_of "$window"; echo; done | sort -u)" "280 339 "
# Moved three times in a row, as a drag does: each move's notice comes after the next move.
xdotool windowmove "$window" 100 100 windowmove "$window" 150 120 windowmove "$window" 200 140
eventually_says "200 140 " place_of "$window"
check "moved, it holds still" "$(for _ in $(seq 40); do place_of "$window"; echo; done | sort -u)" "200 140 "
click_at "$window" 664 97 1
check "Save clicked in a frame" "$(outcome framed)" "$samples/Untitled.txt|0"
# A sheet has a border but no title bar, which would cover its parent's.
launch framed-sheet "$sheetwin"
eventually xdotool search --onlyvisible --name '^Sheet$'
sheet=$(xdotool search --onlyvisible --name '^Sheet$')
eventually framed "$sheet"
read -r _ sheet_y <<<"$(place_of "$sheet")"
read -r _ frame_y <<<"$(place_of "$(frame_of "$sheet")")"
check "a sheet has no title bar" "$((sheet_y - frame_y <= 2))" 1
kill "$(cat "$work/framed-sheet.pid")"
outcome framed-sheet >/dev/null
# A panel keeps the top 40 pixels: a dialog with no place of its own yet (the one above
# remembers where it was moved) is centred in what is left.
launch panel "$probe" panel 40
eventually_says "_NET_WORKAREA(CARDINAL) = 0, 40, 1280, 760" xprop -root _NET_WORKAREA
launch below-panel env XDG_CONFIG_HOME="$work/below-panel" \
    "$kelpick" save --dir "$samples" --name "Untitled.txt"
window=$(window_of below-panel)
eventually framed "$window"
check "a dialog is centred below a panel" "$(place_of "$window")" "280 359 "
xdotool windowfocus --sync "$window"
xdotool key Escape
outcome below-panel >/dev/null
kill "$(cat "$work/panel.pid")"
outcome panel >/dev/null

# ---- Errors: no display, and a display that goes away.
DISPLAY=:9999 timeout 20 "$kelpick" ask-save --document a >"$work/none.out" 2>"$work/none.err"
check "no display exits 2" "$?" 2
check "no display says why" "$(grep -c 'cannot open the X display ":9999"' "$work/none.err")" 1

# A server without RandR and without shared memory, which the backend does without: frames
# go through the socket and show the same.
start_server -extension RANDR -extension MIT-SHM
DISPLAY=$server_display launch gone "$kelpick" ask-save --document "Résumé.txt" \
    --snapshot "$artifacts/ask-save-x11-unshared.png"
DISPLAY=$server_display window_of gone >/dev/null
eventually test -s "$artifacts/ask-save-x11-unshared.png"
check "a frame sent through the socket" "$(cmp -s "$artifacts/ask-save-x11-scale1.png" \
    "$artifacts/ask-save-x11-unshared.png" && echo same)" same
kill "$server_pid"
check "a display that goes away exits 2" "$(outcome gone)" "|2"
check "and says so" "$(grep -c 'went away' "$work/gone.err")" 1

echo "x11 end to end: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
