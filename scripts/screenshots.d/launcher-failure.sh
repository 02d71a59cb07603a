# A system command that fails shows its message in a toast: a Trash whose
# size cache is a folder cannot be emptied completely.
mkdir -p "$HOME/.local/share/Trash/files" "$HOME/.local/share/Trash/info" "$HOME/.local/share/Trash/directorysizes"
printf 'kept\n' >"$HOME/.local/share/Trash/directorysizes/kept"
open_launcher "empty trash"
send_keys Return
wait_for 100 xdotool search --onlyvisible --name "^Tessary$"
sleep 0.3
send_keys Return
sleep 0.8
capture launcher-failure-toast
sleep 4
