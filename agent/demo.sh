#!/bin/sh
# Shows the system at work: starts the agent on loopback with a fresh sample
# network, drives it with the client over IIOP, stops it. Leaves nothing
# behind. Usage: demo.sh BIN_DIR
set -eu
bin=$1

work=$(mktemp -d)
agent=""
stop() {
  status=$?
  if [ -n "$agent" ]; then
    kill "$agent" 2>/dev/null || true
    wait "$agent" || status=$?
    agent=""
  fi
  rm -rf "$work"
  exit "$status"
}
trap stop EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

say() {
  printf '\n\033[1m$ %s\033[0m\n' "$*"
}
nms() {
  say zk-nms "$@"
  "$bin/zk-nms" --agent "$work/agent.ior" --user demo --password-file "$work/password" "$@"
}

echo "demo-password" >"$work/password"
say "zk-agent passwd --users users demo"
"$bin/zk-agent" passwd --users "$work/users" demo <"$work/password"

say "zk-agent --listen 127.0.0.1:0 --inventory network.db --users users"
"$bin/zk-agent" --listen 127.0.0.1:0 --inventory "$work/network.db" --users "$work/users" \
  --ior-file "$work/agent.ior" --log-file "$work/agent.log" &
agent=$!
waited=0
until [ -s "$work/agent.ior" ]; do
  kill -0 "$agent" 2>/dev/null || { cat "$work/agent.log" >&2; exit 1; }
  waited=$((waited + 1))
  [ "$waited" -le 300 ] || { echo "the agent did not come up" >&2; exit 1; }
  sleep 0.1
done

nms ems
nms me | sed -n 1,12p
echo "... and so on: $("$bin/zk-nms" --agent "$work/agent.ior" --user demo \
  --password-file "$work/password" -o csv me | tail -n +2 | wc -l) managed elements in all"
nms me 7
nms subnetwork
nms -o csv link | sed -n 1,5p

say "kill -TERM (the agent)"
kill "$agent"
wait "$agent"
agent=""
echo "The agent stopped cleanly."
