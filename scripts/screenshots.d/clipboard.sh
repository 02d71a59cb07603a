# The clipboard popup: both empty states and a mixed history (texts, a picture,
# a file list, a pinned entry).
open_clipboard() { send_keys ctrl+alt+v; wait_for_panel; [ -z "${1:-}" ] || type_text "$1"; sleep 0.6; }
clip() { # <xclip arguments…>: copies stdin and waits for the history's poll
  xclip -selection clipboard "$@"
  sleep 0.8
}
open_clipboard
capture clipboard-empty-history
close_panel

printf 'Meeting moved to Thursday, 10:30 in room 4B' | clip -i
printf 'git log --oneline --graph --decorate --all' | clip -i
convert -size 320x200 gradient:'#f4a259'-'#5b8e7d' "$HOME/Documents/sunset.png"
clip -t image/png -i "$HOME/Documents/sunset.png"
printf 'file://%s\r\nfile://%s\r\n' "$HOME/Documents/Quarterly report.txt" "$HOME/Documents/Travel plans.pdf" \
  | clip -t text/uri-list -i
printf 'The quick brown fox jumps over the lazy dog. A longer note that wraps onto a second line of the row and ends there.' \
  | clip -i
# Pins the oldest text, which moves it to the top.
open_clipboard
send_keys Down Down Down Down ctrl+p Escape
sleep 0.3
open_clipboard
send_keys Down
capture clipboard-history
close_panel

open_clipboard "zebra"
capture clipboard-no-matches
close_panel
