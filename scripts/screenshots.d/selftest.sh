# The self-check window, in the session where Tessary already runs.
"$tessary" --selftest >"$session/selftest.log" 2>&1 &
selftest=$!
wait_for 200 xdotool search --onlyvisible --name "Tessary Self-Check"
# Every row has its answer well within this.
sleep 2
capture selftest
send_keys Escape
wait "$selftest" || true
