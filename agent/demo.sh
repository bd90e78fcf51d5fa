#!/bin/sh
# Shows the system at work: starts the agent on loopback with a fresh sample
# network, lets clients list it, change it and watch it over IIOP, and stops it.
# Leaves nothing behind. Usage: demo.sh BIN_DIR
set -eu
bin=$1

work=$(mktemp -d)
agent=""
watchers=""
stop() {
  status=$?
  for process in $watchers $agent; do
    kill "$process" 2>/dev/null || true
    wait "$process" 2>/dev/null || true
  done
  rm -rf "$work"
  exit "$status"
}
trap stop EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

say() {
  printf '\n\033[1m$ %s\033[0m\n' "$*"
}
quiet_nms() {
  "$bin/zk-nms" --agent "$work/agent.ior" --user demo --password-file "$work/password" "$@"
}
nms() {
  say zk-nms "$@"
  quiet_nms "$@"
}
admin() {
  say zk-agent admin "$@"
  "$bin/zk-agent" admin --agent "$work/admin.ior" "$@"
}
# until_done LOG-OF-WHOEVER COMMAND...: repeats the command until it succeeds,
# for a minute.
until_done() {
  log=$1
  shift
  deadline=$(($(date +%s) + 60))
  until "$@"; do
    if [ "$(date +%s)" -gt "$deadline" ]; then
      cat "$log" >&2
      echo "this took too long: $*" >&2
      exit 1
    fi
    sleep 0.1
  done
}

# --- The agent comes up ---

echo "demo-password" >"$work/password"
say "zk-agent passwd --users users demo"
"$bin/zk-agent" passwd --users "$work/users" demo <"$work/password"

say "zk-agent --listen 127.0.0.1:0 --inventory network.db --users users --admin"
"$bin/zk-agent" --listen 127.0.0.1:0 --inventory "$work/network.db" --users "$work/users" \
  --ior-file "$work/agent.ior" --admin --admin-ior-file "$work/admin.ior" \
  --log-file "$work/agent.log" &
agent=$!
until_done "$work/agent.log" test -s "$work/agent.ior"

# --- The network, as an NMS lists it ---

nms ems
nms me | sed -n 1,8p
echo "... and so on: $(quiet_nms -o csv me | tail -n +2 | wc -l) managed elements in all"
nms subnetwork
nms -o csv link | sed -n 1,4p
nms submap | sed -n 1,5p

# --- The network changes, and two NMSs watch: one is pushed to, one pulls ---

watch() {
  name=$1
  shift
  say "zk-nms events $* &"
  quiet_nms events "$@" --timeout 120 >"$work/$name" 2>"$work/$name.err" &
  watchers="$watchers $!"
}
# seen TEXT: whether both have printed it.
seen() {
  grep -q "$1" "$work/pushed" && grep -q "$1" "$work/pulled"
}
# came HOW: fails unless every kind of event came to the watcher HOW.
came() {
  for event in NT_ATTRIBUTE_VALUE_CHANGE NT_OBJECT_CREATION NT_ALARM NT_OBJECT_DELETION; do
    grep -q "$event" "$work/$1" || { echo "no $event was $1" >&2; exit 1; }
  done
}
# Their subscriptions are in place once both have seen a change.
both_watch() {
  quiet_nms set-label 1 "is anybody watching?"
  quiet_nms set-label 1 "Aldermoor 1"
  seen watching
}
watch pushed
watch pulled --pull
until_done "$work/pushed.err" both_watch

nms set-label 7 "Harbour terminal"
admin rename-device 8 Aldermoor-QA8-renamed
say "zk-agent admin create-device --name Demo-QM32 --product 'Quor QM-32 Metro Multiplexer'"
device=$("$bin/zk-agent" admin --agent "$work/admin.ior" create-device --name Demo-QM32 \
  --product "Quor QM-32 Metro Multiplexer")
echo "$device"
say "zk-agent admin raise-alarm --device 7 --cause LOS --severity critical --text 'no light'"
alarm=$("$bin/zk-agent" admin --agent "$work/admin.ior" raise-alarm --device 7 --cause LOS \
  --severity critical --text "no light")
echo "$alarm"
nms alarms
admin clear-alarm "$alarm"
admin remove device "$device"
until_done "$work/pushed.err" seen NT_OBJECT_DELETION

# shellcheck disable=SC2086  # a list of process ids
kill $watchers
for process in $watchers; do
  wait "$process" || true
done
watchers=""
for name in pushed pulled; do
  came "$name"
  say "(what was $name)"
  grep -v -e watching -e "Aldermoor 1" "$work/$name"
done
nms me 7

# --- The agent stops ---

say "kill -TERM (the agent)"
kill "$agent"
wait "$agent"
agent=""
echo "The agent stopped cleanly."
