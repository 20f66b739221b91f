# Read by the steps of a user: `. "$STEPS"`. Each function fails where it cannot do its work.

# wait_for TITLE [SECONDS]: waits until a window with that title is shown (20 seconds), and makes it the active one.
wait_for() {
    left=$((${2:-20} * 10))
    until window=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1) && [ -n "$window" ]; do
        left=$((left - 1))
        if [ "$left" -le 0 ]; then
            echo "no window '$1' came; there are:"
            xdotool search --onlyvisible --name '.' getwindowname %@ 2>/dev/null || true
            return 1
        fi
        sleep 0.1
    done
    xdotool windowfocus --sync "$window"
}

# press KEY...: presses keys by their X names, such as n, Return, Tab, alt+F4.
press() {
    xdotool key --delay 50 "$@"
}

# picture NAME: a picture of the screen. An evenly coloured screen is a failure.
picture() {
    sleep 0.5
    gm import -window root "$PICTURES/$1.png"
    colours=$(gm identify -format '%k' "$PICTURES/$1.png")
    [ "$colours" -gt 2 ] || {
        echo "the picture $1 shows nothing: $colours colours"
        return 1
    }
}
