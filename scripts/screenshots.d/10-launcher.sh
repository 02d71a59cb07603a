# The launcher: an application, a calculation, a web keyword, a snippet keyword.
open_launcher "xterm"
capture launcher-app
close_panel
open_launcher "12*7%"
capture launcher-calculation
close_panel
open_launcher "g cats"
capture launcher-web-search
close_panel
open_launcher "sig"
capture launcher-snippet
close_panel
