# The settings window, brought forward by a second start: one picture per tab.
# The keyboard starts on the tab bar; Ctrl+Tab goes to the next tab.
"$tessary" >>"$session/tessary.log" 2>&1
wait_for 100 xdotool search --onlyvisible --name '^Tessary Settings$'
sleep 0.5
capture settings-general
for tab in windows clipboard launcher; do
  send_keys ctrl+Tab
  sleep 0.4
  capture "settings-$tab"
done
# The first snippet in the editor.
send_keys ctrl+Tab Tab
sleep 0.4
capture settings-snippets
