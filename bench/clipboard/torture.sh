#!/usr/bin/env bash
# Copies texts and pictures while killing Tessary with SIGKILL at random
# moments, on a private test X session. After every kill the history must
# decode, name only pictures that exist, still hold every entry an earlier
# check found on disk (save what the cap pushed out) and leave at most the
# temporaries of the writes cut short, which the next start removes; queries
# run meanwhile end cleanly. Then SIGTERM rounds: every copy recorded before
# the signal must be on disk.
#   bench/clipboard/torture.sh [kills=200] [terms=20] [display-number=88] [tessary binary]
set -euo pipefail
cd "$(dirname "$0")/../.."
kills=${1:-200} terms=${2:-20} num=${3:-88}
binary=$(realpath "${4:-build/test/src/app/tessary}")
state=$(mktemp -d)
pid=
cleanup() {
  [ -n "$pid" ] && kill -9 "$pid" 2>/dev/null || true
  tests/x11/session/xsession.sh stop "$num" "$state" >/dev/null 2>&1 || true
  rm -rf "$state"
}
trap cleanup EXIT

tests/x11/session/xsession.sh start "$num" "$state" >/dev/null
export DISPLAY=":$num" QT_QPA_PLATFORM=xcb HOME=$state/home XDG_RUNTIME_DIR=$state/runtime
export XDG_DATA_HOME=$state/home/data XDG_CONFIG_HOME=$state/home/config
export QT_LOGGING_RULES="tessary.app.info=true" ASAN_OPTIONS=detect_leaks=0
mkdir -p -m 700 "$HOME" "$XDG_RUNTIME_DIR"
data=$XDG_DATA_HOME/Tessary

for i in $(seq 0 15); do
  convert -size 24x24 "xc:rgb($((i * 16)),$((255 - i * 16)),77)" "$state/picture-$i.png"
done

# Starts Tessary and returns once it monitors the clipboard.
start() {
  : >"$state/log"
  "$binary" 2>"$state/log" &
  pid=$!
  for _ in $(seq 1 300); do
    grep -q "ready at" "$state/log" && return 0
    sleep 0.05
  done
  echo "Tessary did not start:"; cat "$state/log"; exit 1
}

copy_text() { printf '%s' "$1" | xclip -selection clipboard -i; }
copy_picture() { xclip -selection clipboard -t image/png -i "$state/picture-$(( RANDOM % 16 )).png"; }

# Checks the files on disk against the previous check; prints the temporaries left.
check() {
  python3 - "$data" "$state/seen" "$1" <<'PY'
import json, os, re, sys
data, seen_path, mode = sys.argv[1], sys.argv[2], sys.argv[3]
history = os.path.join(data, "clipboard.json")
items = json.load(open(history)) if os.path.exists(history) else []
assert isinstance(items, list), "history is not a list"
texts = []
for item in items:
    for key in ("id", "kind", "date", "pinned", "hash", "pixelWidth", "pixelHeight"):
        assert key in item, f"entry without {key}"
    if item["kind"] == "image":
        name = item["imageFile"]
        assert re.fullmatch(r"[0-9a-f]{24}\.png", name), name
        assert os.path.exists(os.path.join(data, "images", name)), f"history names missing picture {name}"
    if item["kind"] == "text":
        texts.append(item["text"])
seen = json.load(open(seen_path)) if os.path.exists(seen_path) else []
if mode == "kill":
    lost = [t for t in seen if t not in texts]
    # Only the cap may push entries out, and only the oldest.
    assert not lost or (len(items) >= 200 and seen[-len(lost):] == lost), f"lost {lost[:3]}"
else:
    # Every history write holds the whole list, so an earlier copy missing
    # beside a later one was never seen by the poll (the next copy replaced
    # it first under load); a lost write would lose the newest copies.
    copied = json.loads(mode)
    assert copied[-1] in texts, f"recorded before SIGTERM but not on disk: {copied[-1]}"
    print(sum(t not in texts for t in copied))
json.dump(texts, open(seen_path, "w"))
temporaries = [n for d in (data, os.path.join(data, "images")) if os.path.isdir(d)
               for n in os.listdir(d) if re.fullmatch(r".+\.(json|png|unreadable-[0-9-]+)\.[A-Za-z0-9]{6}", n)]
if mode == "kill":
    print(len(temporaries))
PY
}

most_temporaries=0
copies=0
queries=0
for round in $(seq 1 "$kills"); do
  start
  # Now and then a `tessary query` reads the same files meanwhile, and is interrupted half the time.
  query=
  if (( RANDOM % 3 == 0 )); then
    "$binary" query "kill round" >/dev/null 2>>"$state/query.log" &
    query=$!
  fi
  for j in $(seq 0 $(( RANDOM % 4 ))); do
    if (( RANDOM % 4 == 0 )); then copy_picture; else copy_text "kill round $round copy $j"; fi
    copies=$((copies + 1))
    sleep "0.0$(( RANDOM % 10 ))"
  done
  sleep "0.$(( RANDOM % 3 ))$(( RANDOM % 10 ))"
  kill -9 "$pid" || { echo "Tessary ended by itself:"; cat "$state/log"; exit 1; }
  wait "$pid" 2>/dev/null || true; pid=
  if [ -n "$query" ]; then
    if (( RANDOM % 2 )); then kill -INT "$query" 2>/dev/null || true; fi
    status=0; wait "$query" || status=$?
    [ $status = 0 ] || [ $status = 130 ] || { echo "query ended with status $status"; cat "$state/query.log"; exit 1; }
    queries=$((queries + 1))
  fi
  left=$(check kill)
  (( left > most_temporaries )) && most_temporaries=$left
  (( round % 25 == 0 )) && echo "$round kills, $copies copies: history intact"
done
echo "SIGKILL: $kills kills during $copies copies and $queries queries; history intact after each;" \
  "at most $most_temporaries temporaries left by a kill"

skipped=0
for round in $(seq 1 "$terms"); do
  start
  expected=()
  for j in $(seq 0 9); do
    copy_text "term round $round copy $j"
    expected+=("term round $round copy $j")
    sleep 0.1
  done
  sleep 0.3
  kill -TERM "$pid"; wait "$pid" || { echo "exit status $? after SIGTERM"; cat "$state/log"; exit 1; }; pid=
  missed=$(check "$(python3 -c 'import json,sys; print(json.dumps(sys.argv[1:]))' "${expected[@]}")")
  skipped=$((skipped + missed))
done
echo "SIGTERM: $terms rounds of 10 copies; every recorded copy on disk after each ($skipped never seen by the poll)"

start; kill -TERM "$pid"; wait "$pid" || true; pid=
left=$(check kill)
[ "$left" = 0 ] || { echo "$left temporaries left after a clean start"; exit 1; }
echo "no temporaries after a clean start"
